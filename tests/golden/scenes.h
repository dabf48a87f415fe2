// Short renders, each of a single feature.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/engine_host.h"

namespace tarquil {

struct Scene {
    std::string name;
    std::function<void(EngineHost&)> prepare; // queues events at the start
};

inline constexpr uint32_t SCENE_FRAMES = 66048; // a second and a half, in whole blocks

const std::vector<Scene>& golden_scenes();

// Interleaved stereo of SCENE_FRAMES frames.
std::vector<float> render_scene(const Scene& scene);

} // namespace tarquil
