// The wavetables' cache; golden scenes have what is in them.

#include "softsynth/wavetables/waveform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/temp_directory.h"

namespace tarquil {

namespace {

class WaveformCache : public testing::Test {
  protected:
    [[nodiscard]] std::filesystem::path file() const { return folder / "wt128-2.dat"; }
    [[nodiscard]] Waveform make_saw() const { return Waveform(OSC_SAW, folder.string()); }
    static void expect_same(const Waveform& a, const Waveform& b) {
        for (unsigned k = 0; k < a.size(); k++)
            for (unsigned i = 0; i <= WAVETABLE_SIZE; i++)
                ASSERT_EQ(a.table(k).get_data()[i], b.table(k).get_data()[i]);
    }

    TempDirectory directory;
    std::filesystem::path folder = directory.path("new/tarquil");
};

TEST_F(WaveformCache, SecondStartReadsTheSameBitsFromTheFile) {
    const Waveform built = make_saw();
    ASSERT_EQ(std::filesystem::file_size(file()), 128U * 4096 * 4);
    const Waveform read = make_saw();
    expect_same(built, read);
    // A value that is plausible is believed, which shows that the file is really read.
    std::fstream(file(), std::ios::in | std::ios::out | std::ios::binary).write("\0\0\x80?", 4);
    EXPECT_EQ(make_saw().table(0).get_data()[0], 1.0F);
}

TEST_F(WaveformCache, DamagedFilesCountAsMissing) {
    const Waveform built = make_saw();
    for (const float bad : {std::nanf(""), INFINITY, 2.5F}) {
        std::fstream stream(file(), std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(4L * 100000);
        stream.write(reinterpret_cast<const char*>(&bad), 4);
        stream.close();
        expect_same(built, make_saw());
    }
    std::filesystem::resize_file(file(), 128U * 4096 * 4 - 1);
    expect_same(built, make_saw());
    EXPECT_EQ(std::filesystem::file_size(file()), 128U * 4096 * 4) << "the file is replaced";
}

TEST_F(WaveformCache, AFolderThatCannotBeUsedCostsTimeOnly) {
    const Waveform built(OSC_SAW);
    const std::filesystem::path no_folder = directory.path("file");
    std::ofstream(no_folder) << "no folder";
    std::filesystem::create_directories(folder / "wt128-2.dat"); // a folder in the file's place
    for (const std::filesystem::path& bad :
         {no_folder, no_folder / "below", std::filesystem::path("/proc/tarquil"), folder})
        expect_same(built, Waveform(OSC_SAW, bad.string()));
    EXPECT_TRUE(std::filesystem::is_regular_file(no_folder));
}

} // namespace

} // namespace tarquil
