// One oversampled step of the ladder filter, for a float or for lanes of them.
//
// V values run stage by stage: a stage of one waits for the one before, so that the others fill the
// processor's time.  Internal linkage, since kernels of every instruction set use it.

#pragma once

namespace tarquil {

static inline float abs_value(float x) {
    return x < 0.0F ? -x : x;
}

// The saturation: a rational approximation of tanh(x / 2), odd, with slope 1/2 at 0.  That it is
// not tanh(x) halves the level in the stages and is part of the sound.
template <typename Value> static inline Value ladder_saturation(Value x) {
    const Value a = abs_value(x);
    const Value p = 12.0F + (6.0F + (3.0F + a) * a) * a;
    return x * p / (24.0F + a * p);
}

template <typename Value, int V> struct LadderStages {
    Value y[4][V];
    Value t[4][V]; // saturated stages
    Value y4_prev[V];
    Value feedback[V];
};

template <typename Value, int V> struct LadderSettings {
    Value k[V];
    Value gain[V];
    Value g[V];
    Value c[5][V]; // weights of the input (after feedback) and of the four stages
};

// x is the input; out gets the step's output.
template <typename Value, int V>
static inline void ladder_step(LadderStages<Value, V>& stages, const LadderSettings<Value, V>& set,
                               const Value (&x)[V], Value (&out)[V]) {
    Value u[V];
    Value saturated[V];
    for (int v = 0; v < V; v++)
        u[v] = x[v] - set.k[v] * stages.feedback[v];
    for (int v = 0; v < V; v++)
        saturated[v] = ladder_saturation(u[v]);
    for (int stage = 0; stage < 4; stage++) {
        Value(&y)[V] = stages.y[stage];
        Value(&t)[V] = stages.t[stage];
        for (int v = 0; v < V; v++)
            y[v] = y[v] + (saturated[v] - t[v]) * set.g[v];
        for (int v = 0; v < V; v++)
            t[v] = saturated[v] = ladder_saturation(y[v]);
    }
    for (int v = 0; v < V; v++) {
        stages.feedback[v] = (stages.y[3][v] + stages.y4_prev[v]) * 0.5F;
        stages.y4_prev[v] = stages.y[3][v];
    }
    for (int v = 0; v < V; v++)
        out[v] = (set.c[0][v] * u[v] + set.c[1][v] * stages.t[0][v] + set.c[2][v] * stages.t[1][v] +
                  set.c[3][v] * stages.t[2][v] + set.c[4][v] * stages.t[3][v]) *
                 set.gain[v];
}

} // namespace tarquil
