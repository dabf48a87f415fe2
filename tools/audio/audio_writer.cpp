// Writing of one sound file.

#include "tools/audio/audio_writer.h"

#include <unistd.h>

#include <cerrno>

#include "common/failure.h"
#include "tools/audio/ogg_serial.h"

namespace tarquil {

namespace {

// Vorbis quality, 0..1: about 192 kbit/s.
constexpr double VORBIS_QUALITY = 0.6;

} // namespace

// libsndfile's encoders ignore what a write returns, or leak memory when it fails at the start: the
// first error is kept here, nothing is written after it, and the library does not see it.
SF_VIRTUAL_IO AudioWriter::callbacks() {
    SF_VIRTUAL_IO io{};
    io.get_filelen = [](void* user) {
        const int descriptor = static_cast<Stream*>(user)->descriptor;
        const off_t position = lseek(descriptor, 0, SEEK_CUR);
        const off_t length = lseek(descriptor, 0, SEEK_END);
        lseek(descriptor, position, SEEK_SET);
        return sf_count_t(length);
    };
    io.seek = [](sf_count_t offset, int whence, void* user) {
        return sf_count_t(lseek(static_cast<Stream*>(user)->descriptor, offset, whence));
    };
    io.read = [](void* bytes, sf_count_t count, void* user) {
        return sf_count_t(read(static_cast<Stream*>(user)->descriptor, bytes, size_t(count)));
    };
    io.write = [](const void* bytes, sf_count_t count, void* user) {
        Stream& target = *static_cast<Stream*>(user);
        for (sf_count_t done = 0; done < count && target.error == 0;) {
            const ssize_t written = ::write(
                target.descriptor, static_cast<const char*>(bytes) + done, size_t(count - done));
            if (written > 0)
                done += written;
            else if (written == 0 || errno != EINTR)
                target.error = written == 0 ? ENOSPC : errno;
        }
        return count;
    };
    io.tell = [](void* user) {
        return sf_count_t(lseek(static_cast<Stream*>(user)->descriptor, 0, SEEK_CUR));
    };
    return io;
}

AudioWriter::AudioWriter(const OutputPlace& place, const AudioFormat& format, uint64_t max_frames)
    : output(place), is_ogg(format.samples == SampleType::LOSSY) {
    stream.descriptor = output.get_descriptor();
    SF_INFO info{};
    info.samplerate = format.rate;
    info.channels = format.channels;
    info.format = sndfile_format(format, max_frames);
    SF_VIRTUAL_IO io = callbacks();
    sndfile.reset(sf_open_virtual(&io, SFM_WRITE, &info, &stream));
    check();
    if (!sndfile)
        throw BadInput(output.get_path() + ": no " + container_name(format) + " file at " +
                       std::to_string(format.rate) + " Hz: " + sf_strerror(nullptr));
    sf_command(sndfile.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    // The peak chunk carries the time of day, and equal sounds are equal files.
    sf_command(sndfile.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    if (format.container == Container::OGG_VORBIS) {
        double quality = VORBIS_QUALITY;
        sf_command(sndfile.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
}

void AudioWriter::write(const float* frames, uint64_t num_frames) {
    const auto count = sf_count_t(num_frames);
    const bool is_complete = sf_writef_float(sndfile.get(), frames, count) == count;
    check();
    if (!is_complete)
        throw Failure(STATUS_CANNOT, output.get_path() + ": " + sf_strerror(sndfile.get()));
}

void AudioWriter::finish() {
    sndfile.reset();
    check();
    errno = 0;
    if (is_ogg && !set_ogg_serial(stream.descriptor, OGG_SERIAL))
        output.fail();
}

void AudioWriter::check() const {
    if (stream.error == 0)
        return;
    errno = stream.error;
    output.fail();
}

} // namespace tarquil
