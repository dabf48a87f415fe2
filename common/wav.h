// Reading of mono 16-bit PCM WAV data.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarquil {

// Append the data's samples to `samples`, each divided by 32768, and store the sample rate in Hz.
// 0 or a code for wav_get_error_string: 1 cannot be opened, 2 header, 3 not PCM, 4 not mono, 5 not
// 16 bit, 6 no data chunk, or one that ends early (the samples before its end are appended).  The
// format chunk must come first and have 16 bytes; a file's data chunk must come next, in memory
// other chunks may lie between.
int wav_read(const std::string& path, std::vector<float>& samples, float& sample_rate);
int wav_decode(const uint8_t* bytes, size_t length, std::vector<float>& samples,
               float& sample_rate);

// For people; "Generic error" for a code that is not in use.
const char* wav_get_error_string(int code);

} // namespace tarquil
