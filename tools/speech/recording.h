// Recordings read as the speech encoder takes them.

#pragma once

#include <string>
#include <vector>

namespace tarquil {

// The sound of a file that libsndfile reads ("-" is standard input), its channels mixed to one, at
// 44100 Hz.  BadInput for one that can not be read or is empty or longer than ten minutes.
std::vector<float> read_recording(const std::string& path);

} // namespace tarquil
