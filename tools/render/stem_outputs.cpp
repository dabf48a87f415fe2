// One sound file for each channel of a song.

#include "tools/render/stem_outputs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "common/failure.h"
#include "common/platform/file_system.h"
#include "tools/render/main_output.h"

namespace tarquil {

namespace {

constexpr mode_t NEW_FOLDER_MODE = 0777; // less the umask

std::string stem_name(unsigned channel, const AudioFormat& format) {
    const std::string number = std::to_string(channel + 1);
    return (number.size() < 2 ? "channel-0" : "channel-") + number + file_ending(format);
}

} // namespace

StemOutputs::Stem::Stem(unsigned stem_channel, const std::string& path, const AudioFormat& format,
                        uint64_t max_frames)
    : channel(stem_channel),
      writer({.path = path}, format, converted_frames(max_frames, format.rate)),
      converter(format.rate, [this](const float* frames,
                                    uint64_t num_frames) { writer.write(frames, num_frames); }),
      chunks([this](const float* frames, uint64_t num_frames) {
          converter.write(frames, num_frames);
      }) {}

StemOutputs::StemOutputs(const EngineDriver& engine, std::string folder_path,
                         const AudioFormat& format, const ChannelSet& channels, uint64_t max_frames)
    : driver(engine), folder(std::move(folder_path)) {
    if (mkdir(folder.c_str(), NEW_FOLDER_MODE) == 0)
        remove_folder = true;
    else if (errno != EEXIST)
        throw BadInput(folder + ": cannot be made: " + strerror(errno));
    try {
        for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
            if (channels[channel])
                stems.push_back(std::make_unique<Stem>(
                    channel, concat_paths(folder, stem_name(channel, format)), format, max_frames));
    } catch (const Failure&) {
        stems.clear();
        if (remove_folder)
            rmdir(folder.c_str());
        throw;
    }
}

StemOutputs::~StemOutputs() {
    stems.clear();
    if (remove_folder)
        rmdir(folder.c_str());
}

void StemOutputs::write(uint64_t num_frames) {
    for (const std::unique_ptr<Stem>& stem : stems)
        stem->chunks.write(driver.channel_sound(stem->channel).get_first_left_sample_ptr(),
                           num_frames);
}

void StemOutputs::finish() {
    for (const std::unique_ptr<Stem>& stem : stems) {
        stem->chunks.finish();
        stem->converter.finish();
        stem->writer.finish();
    }
}

void StemOutputs::commit() {
    for (const std::unique_ptr<Stem>& stem : stems)
        stem->writer.commit();
    remove_folder = false;
}

} // namespace tarquil
