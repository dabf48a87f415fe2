"""Covariance matrix adaptation, after N. Hansen, "The CMA Evolution Strategy: A Tutorial" (2016), its default constants."""

import numpy as np


class CmaEs:
    """Minimises; ask() gives a generation, tell() takes its losses."""

    def __init__(self, start, sigma, seed, population=None):
        n = len(start)
        self.mean, self.sigma = np.array(start, float), sigma
        self.random = np.random.default_rng(seed)
        self.population = population or 4 + int(3 * np.log(n))
        self.parents = self.population // 2
        weights = np.log((self.population + 1) / 2) - np.log(np.arange(1, self.parents + 1))
        self.weights = weights / weights.sum()
        self.mass = 1 / (self.weights ** 2).sum()
        self.c_path = (4 + self.mass / n) / (n + 4 + 2 * self.mass / n)
        self.c_sigma = (self.mass + 2) / (n + self.mass + 5)
        self.c_one = 2 / ((n + 1.3) ** 2 + self.mass)
        self.c_mu = min(1 - self.c_one, 2 * (self.mass - 2 + 1 / self.mass) / ((n + 2) ** 2 + self.mass))
        self.damping = 1 + 2 * max(0, np.sqrt((self.mass - 1) / (n + 1)) - 1) + self.c_sigma
        self.usual_length = np.sqrt(n) * (1 - 1 / (4 * n) + 1 / (21 * n * n))
        self.path, self.sigma_path = np.zeros(n), np.zeros(n)
        self.covariance = np.eye(n)
        self.generation = 0
        self._decompose()

    def _decompose(self):
        values, self.axes = np.linalg.eigh((self.covariance + self.covariance.T) / 2)
        self.lengths = np.sqrt(np.maximum(values, 1e-14))

    def ask(self):
        draws = self.random.standard_normal((self.population, len(self.mean)))
        self.steps = (draws * self.lengths) @ self.axes.T
        return self.mean + self.sigma * self.steps

    def tell(self, losses):
        self.generation += 1
        best = self.steps[np.argsort(losses, kind="stable")[:self.parents]]
        step = self.weights @ best
        self.mean = self.mean + self.sigma * step
        white = self.axes @ ((self.axes.T @ step) / self.lengths)
        self.sigma_path = ((1 - self.c_sigma) * self.sigma_path
                           + np.sqrt(self.c_sigma * (2 - self.c_sigma) * self.mass) * white)
        length = np.linalg.norm(self.sigma_path)
        n = len(self.mean)
        calm = length / np.sqrt(1 - (1 - self.c_sigma) ** (2 * self.generation)) < (1.4 + 2 / (n + 1)) * self.usual_length
        self.path = ((1 - self.c_path) * self.path
                     + calm * np.sqrt(self.c_path * (2 - self.c_path) * self.mass) * step)
        lost = (1 - calm) * self.c_path * (2 - self.c_path)
        self.covariance = ((1 - self.c_one - self.c_mu) * self.covariance
                           + self.c_one * (np.outer(self.path, self.path) + lost * self.covariance)
                           + self.c_mu * (best.T * self.weights) @ best)
        self.sigma *= float(np.exp(min(1.0, self.c_sigma / self.damping * (length / self.usual_length - 1))))
        self._decompose()
