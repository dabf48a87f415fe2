// The stored references of the golden renders.

#include "tests/golden/golden_store.h"

#include <sndfile.hh>

#include <fstream>
#include <iomanip>
#include <limits>
#include <map>
#include <sstream>
#include <utility>

namespace tarquil {

namespace {

std::map<std::string, GoldenNumbers> read_rows(const std::string& path) {
    std::map<std::string, GoldenNumbers> rows;
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string name;
        GoldenNumbers numbers;
        if (words >> name >> numbers.frames >> numbers.rms >> numbers.peak)
            rows[name] = numbers;
    }
    return rows;
}

} // namespace

GoldenStore::GoldenStore(std::string data_directory) : directory(std::move(data_directory)) {}

std::string GoldenStore::frames_path(const std::string& name) const {
    return directory + "/" + name + ".flac";
}

std::string GoldenStore::numbers_path() const {
    return directory + "/numbers.txt";
}

std::vector<float> GoldenStore::pick_frames(const std::vector<float>& sound, unsigned stride) {
    std::vector<float> picked;
    for (size_t i = 0; i + 1 < sound.size(); i += size_t(2) * stride) {
        picked.push_back(sound[i]);
        picked.push_back(sound[i + 1]);
    }
    return picked;
}

std::vector<float> GoldenStore::read_frames(const std::string& name) const {
    SndfileHandle file(frames_path(name));
    if (file.error() != 0)
        return {};
    std::vector<float> frames(size_t(file.frames()) * 2);
    frames.resize(size_t(file.readf(frames.data(), file.frames())) * 2);
    return frames;
}

bool GoldenStore::write_frames(const std::string& name, const std::vector<float>& frames) const {
    SndfileHandle file(frames_path(name), SFM_WRITE, SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 2, 44100);
    const auto count = sf_count_t(frames.size() / 2);
    return file.error() == 0 && file.writef(frames.data(), count) == count;
}

bool GoldenStore::read_numbers(const std::string& name, GoldenNumbers& numbers) const {
    const std::map<std::string, GoldenNumbers> rows = read_rows(numbers_path());
    const auto row = rows.find(name);
    if (row == rows.end())
        return false;
    numbers = row->second;
    return true;
}

bool GoldenStore::write_numbers(const std::string& name, const GoldenNumbers& numbers) const {
    std::map<std::string, GoldenNumbers> rows = read_rows(numbers_path());
    rows[name] = numbers;
    std::ofstream file(numbers_path());
    file << "# scene, frames, RMS, peak\n" << std::setprecision(9);
    for (const auto& [row_name, row] : rows)
        file << row_name << ' ' << row.frames << ' ' << row.rms << ' ' << row.peak << '\n';
    return file.flush().good();
}

} // namespace tarquil
