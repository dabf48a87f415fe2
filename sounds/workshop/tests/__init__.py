"""Tests of the workshop."""
