// Tests of what stands between the player and a device: formats, times, choices, reconnection.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "common/failure.h"
#include "standalone/block_clock.h"
#include "standalone/device_choice.h"
#include "standalone/device_keeper.h"
#include "standalone/sample_format.h"

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

template <typename Sample>
std::vector<Sample> as_samples(SampleFormat format, const std::vector<float>& left,
                               const std::vector<float>& right, unsigned channels = 2) {
    std::vector<Sample> samples(left.size() * channels);
    EXPECT_EQ(sample_bytes(format), sizeof(Sample));
    write_frames(format, channels, left.data(), right.data(), uint32_t(left.size()),
                 samples.data());
    return samples;
}

TEST(SampleFormat, HasFullScaleAndNothingBeyond) {
    const std::vector<float> left{1.0F, -1.0F, 0.5F};
    const std::vector<float> right{1.5F, -7.0F, 0.0F};
    EXPECT_THAT(as_samples<float>(SampleFormat::FLOAT, left, right),
                ElementsAre(1.0F, 1.5F, -1.0F, -7.0F, 0.5F, 0.0F));
    EXPECT_THAT(as_samples<int32_t>(SampleFormat::INT32, left, right),
                ElementsAre(INT32_MAX, INT32_MAX, -INT32_MAX, -INT32_MAX, 1073741824, 0));
    EXPECT_THAT(as_samples<int32_t>(SampleFormat::INT24, left, right),
                ElementsAre(8388607, 8388607, -8388607, -8388607, 4194304, 0));
    EXPECT_THAT(as_samples<int16_t>(SampleFormat::INT16, left, right),
                ElementsAre(32767, 32767, -32767, -32767, 16384, 0));
}

TEST(SampleFormat, ThreeBytesAreTheLowOnesOfFour) {
    const float left[] = {0.3F, -0.3F};
    const float right[] = {-0.7F, 0.7F};
    int32_t wide[4];
    uint8_t packed[13] = {};
    packed[12] = 0xAA;
    write_frames(SampleFormat::INT24, 2, left, right, 2, wide);
    write_frames(SampleFormat::INT24_PACKED, 2, left, right, 2, packed);
    for (int i = 0; i < 4; i++) {
        const uint8_t* bytes = packed + ptrdiff_t(3) * i;
        const auto value = int32_t(uint32_t(bytes[0]) << 8U | uint32_t(bytes[1]) << 16U |
                                   uint32_t(bytes[2]) << 24U) >>
                           8;
        EXPECT_EQ(value, wide[i]);
    }
    EXPECT_EQ(packed[12], 0xAA);
}

TEST(SampleFormat, OneChannelHasBothSidesAndManyHaveTheFirstTwo) {
    EXPECT_THAT(as_samples<float>(SampleFormat::FLOAT, {0.5F}, {0.25F}, 1), ElementsAre(0.375F));
    EXPECT_THAT(as_samples<float>(SampleFormat::FLOAT, {0.5F}, {0.25F}, 4),
                ElementsAre(0.5F, 0.25F, 0, 0));
}

// A device whose clock is a little off, and a thread that wakes up late by up to a third of a
// block.
TEST(BlockClock, NotesKeepTheirDistanceThoughTheThreadWakesUpUnevenly) {
    constexpr double RATE = 48000;
    constexpr uint32_t PERIOD = 256;
    constexpr double BLOCK = PERIOD / RATE * 1.0002;
    constexpr double NOTE_DISTANCE = 0.0123;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> late(0, BLOCK / 3);
    BlockClock clock;
    clock.start(RATE, PERIOD);
    double stamp = 5.0;
    std::vector<double> frames;
    for (int block = 0; block < 4000; block++) {
        const double now = 5.0 + block * BLOCK + late(random);
        clock.begin_block(now);
        while (stamp <= now) {
            const int64_t frame = clock.frame_of(stamp);
            if (frame >= PERIOD)
                break;
            frames.push_back(block * double(PERIOD) + double(std::max<int64_t>(frame, 0)));
            stamp += NOTE_DISTANCE;
        }
    }
    ASSERT_GT(frames.size(), 1500U);
    double worst = 0;
    for (size_t i = frames.size() / 4; i + 1 < frames.size(); i++)
        worst =
            std::max(worst, std::abs(frames[i + 1] - frames[i] - NOTE_DISTANCE * RATE / 1.0002));
    EXPECT_LT(worst, 8); // of 256, were they all at the block's start
}

TEST(BlockClock, StartsAnewAfterAGap) {
    BlockClock clock;
    clock.start(1000, 100);
    clock.begin_block(1.0);
    EXPECT_EQ(clock.frame_of(0.95), 75);
    clock.begin_block(9.0);
    EXPECT_EQ(clock.frame_of(8.951), 76);
    EXPECT_LT(clock.frame_of(5.0), 0);
    EXPECT_EQ(clock.frame_of(9.05), 175);
}

TEST(DeviceChoice, TakesNamesRatesAndPeriodsAndNothingElse) {
    DeviceChoice choice;
    parse_device("alsa:hw:0,3", choice);
    EXPECT_EQ(choice.kind, DeviceKind::ALSA);
    EXPECT_EQ(choice.alsa_name, "hw:0,3");
    parse_device("null:fast", choice);
    EXPECT_EQ(choice.kind, DeviceKind::FAST);
    parse_device("file:my take.flac", choice);
    EXPECT_EQ(choice.kind, DeviceKind::RECORDED);
    EXPECT_EQ(choice.file, "my take.flac");
    for (const char* name : {"", "jac", "alsa:", "null:", "file:", "JACK", "hw:0"})
        EXPECT_THROW(parse_device(name, choice), BadInput) << name;
    EXPECT_EQ(parse_device_rate("384000"), 384000U);
    EXPECT_EQ(parse_period("16"), 16U);
    for (const char* text : {"", "7999", "384001", "48k", "48000.0", "-1", " 48000"})
        EXPECT_THROW(parse_device_rate(text), BadInput) << text;
    for (const char* text : {"15", "8193", "x"})
        EXPECT_THROW(parse_period(text), BadInput) << text;
}

struct FakeState {
    bool is_there = true;
    bool is_lost = false;
    uint32_t dropouts = 0;
    int num_open = 0;
    int num_trials = 0;
};

class FakeDevice : public AudioDevice {
  public:
    explicit FakeDevice(FakeState& all) : state(all) { state.num_open++; }
    FakeDevice(const FakeDevice&) = delete;
    FakeDevice& operator=(const FakeDevice&) = delete;
    ~FakeDevice() override { state.num_open--; }
    [[nodiscard]] std::string name() const override { return "a fake"; }
    [[nodiscard]] bool is_lost() const override { return state.is_lost; }
    [[nodiscard]] uint32_t num_dropouts() const override { return state.dropouts; }

  private:
    FakeState& state;
};

class DeviceKeeperTest : public testing::Test {
  protected:
    static DeviceKeeper::Time at(double seconds) {
        return DeviceKeeper::Time() + std::chrono::milliseconds(int64_t(1000 * seconds));
    }

    FakeState state;
    std::vector<std::string> said;
    DeviceKeeper keeper{[this](std::string& why) -> std::unique_ptr<AudioDevice> {
                            state.num_trials++;
                            if (state.is_there)
                                return std::make_unique<FakeDevice>(state);
                            why = "it is away";
                            return nullptr;
                        },
                        [this](const std::string& line) { said.push_back(line); }};
    std::string reason;
};

TEST_F(DeviceKeeperTest, ALostDeviceIsClosedAndOpenedWhenItIsBack) {
    ASSERT_TRUE(keeper.open(reason));
    keeper.poll(at(10));
    EXPECT_EQ(state.num_trials, 1);
    state.is_lost = true;
    state.is_there = false;
    keeper.poll(at(11));
    EXPECT_EQ(state.num_open, 0);
    EXPECT_EQ(state.num_trials, 1);
    for (const double time : {11.5, 12.0, 12.1, 12.9, 13.0})
        keeper.poll(at(time));
    EXPECT_EQ(state.num_trials, 3); // once a second
    state.is_there = true;
    state.is_lost = false;
    keeper.poll(at(14));
    EXPECT_EQ(state.num_open, 1);
    keeper.poll(at(15));
    EXPECT_EQ(state.num_trials, 4);
    EXPECT_THAT(said, ElementsAre("sound: a fake", HasSubstr("gone"), "sound: a fake"));
}

TEST_F(DeviceKeeperTest, DropoutsAreCountedOverAllDevicesAndToldOnceASecond) {
    ASSERT_TRUE(keeper.open(reason));
    state.dropouts = 2;
    keeper.poll(at(10));
    state.dropouts = 3;
    keeper.poll(at(10.5));
    EXPECT_THAT(said, ElementsAre("sound: a fake", "dropouts so far: 2"));
    keeper.poll(at(11));
    EXPECT_EQ(said.back(), "dropouts so far: 3");
    state.is_lost = true;
    keeper.poll(at(12));
    state = {.dropouts = 4};
    keeper.poll(at(13));
    EXPECT_EQ(keeper.num_dropouts(), 7U);
    EXPECT_EQ(said.back(), "dropouts so far: 7");
}

TEST_F(DeviceKeeperTest, AMissingDeviceIsAReason) {
    state.is_there = false;
    EXPECT_FALSE(keeper.open(reason));
    EXPECT_EQ(reason, "it is away");
    EXPECT_TRUE(said.empty());
}

} // namespace

} // namespace tarquil
