// Wavetables: content, choice and cache.

#include "softsynth/wavetables/waveform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace tarquil {

namespace {

constexpr double PI = std::numbers::pi;

// Amplitude of the sine of harmonic h in a table, whose samples lie half a sample late.
double harmonic(const float* table, unsigned h) {
    double sum = 0;
    for (unsigned i = 0; i < WAVETABLE_SIZE; i++)
        sum += table[i] * std::sin(2 * PI * h * (i + 0.5) / WAVETABLE_SIZE);
    return sum * 2 / WAVETABLE_SIZE;
}

TEST(Waveform, TablesHoldTheTaperedSeriesAndNothingAbove) {
    const auto taper = [](unsigned n, unsigned h) {
        const double c = std::cos(PI / 2 / n * (h - 1));
        return c * c;
    };
    const Waveform saw(OSC_SAW);
    const Wavetable& table = saw.table(35); // harmonics 1..32, 34, ...: table 35 has 40
    ASSERT_EQ(table.get_harmonics(), 40U);
    EXPECT_EQ(table.get_shift(), 20U);
    // The single-precision phasors drift by less than 1e-4 over a table.
    for (const unsigned h : {1U, 2U, 3U, 10U, 39U, 40U})
        EXPECT_NEAR(harmonic(table.get_data(), h),
                    (h % 2 == 1 ? 1 : -1) * 2 / PI / h * taper(40, h), 1e-4)
            << h;
    EXPECT_NEAR(harmonic(table.get_data(), 41), 0, 1e-4);
    EXPECT_EQ(table.get_data()[WAVETABLE_SIZE], table.get_data()[0]);

    const Waveform triangle(OSC_TRIANGLE);
    EXPECT_NEAR(harmonic(triangle.table(7).get_data(), 3), -8 / (9 * PI * PI) * taper(8, 3), 1e-4);
    const Waveform sine(OSC_SINE);
    EXPECT_NEAR(harmonic(sine.table(127).get_data(), 1), 1, 1e-4);
    EXPECT_NEAR(harmonic(sine.table(127).get_data(), 3), 0, 1e-4);
}

TEST(Waveform, NoiseIsTheMinimalStandardGenerator) {
    const Waveform noise(OSC_NOISE);
    const float* data = noise.table(0).get_data();
    EXPECT_EQ(noise.table(0).get_shift(), 12U);
    // 123459876 * 16807 mod (2^31 - 1) = 520932930, the published second number of this seed.
    EXPECT_EQ(data[0], float(520932930) / 1073741824 - 1);
    EXPECT_EQ(data[NOISE_SIZE], data[0]);
    double sum = 0;
    for (unsigned i = 0; i < NOISE_SIZE; i++) {
        ASSERT_LE(std::fabs(data[i]), 1.0F);
        sum += data[i];
    }
    EXPECT_NEAR(sum / NOISE_SIZE, 0, 2e-3);
}

class WaveformCache : public testing::Test {
  protected:
    void SetUp() override {
        char name[] = "/tmp/tarquil-cache-XXXXXX";
        directory = mkdtemp(name);
        folder = directory / "new" / "tarquil";
    }
    void TearDown() override { std::filesystem::remove_all(directory); }
    [[nodiscard]] std::filesystem::path file() const { return folder / "wt128-2.dat"; }
    [[nodiscard]] Waveform make_saw() const { return Waveform(OSC_SAW, folder.string()); }
    static void expect_same(const Waveform& a, const Waveform& b) {
        for (unsigned k = 0; k < a.size(); k++)
            for (unsigned i = 0; i <= WAVETABLE_SIZE; i++)
                ASSERT_EQ(a.table(k).get_data()[i], b.table(k).get_data()[i]);
    }

    std::filesystem::path directory;
    std::filesystem::path folder;
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
    const std::filesystem::path no_folder = directory / "file";
    std::ofstream(no_folder) << "no folder";
    std::filesystem::create_directories(folder / "wt128-2.dat"); // a folder in the file's place
    for (const std::filesystem::path& bad :
         {no_folder, no_folder / "below", std::filesystem::path("/proc/tarquil"), folder})
        expect_same(built, Waveform(OSC_SAW, bad.string()));
    EXPECT_TRUE(std::filesystem::is_regular_file(no_folder));
}

} // namespace

} // namespace tarquil
