// The plug-in object: its clock, a full queue, and its warnings.

#include "vst/tarq_vst.h"

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"
#include "tests/vst/send_midi.h"

namespace tarquil {

namespace {

class ClockedVST : public TarqVST {
  public:
    ClockedVST() : TarqVST(nullptr) {
        setBlockSize(64);
        resume();
    }
    using TarqVST::set_clock;
    static constexpr uint32_t limit() { return PlayerAudio::CLOCK_LIMIT; }

    void midi(unsigned status, unsigned data1, unsigned data2, int32_t delay = 0) {
        send_midi(*this, status, data1, data2, delay);
    }

    std::vector<float> render(int32_t frames) {
        std::vector<float> left(static_cast<size_t>(frames));
        std::vector<float> right(static_cast<size_t>(frames));
        float* outputs[] = {left.data(), right.data()};
        processReplacing(nullptr, outputs, frames);
        left.insert(left.end(), right.begin(), right.end());
        return left;
    }

    // Slow envelopes, portamento, delays and sends, on the first program.
    void make_slow() {
        for (const auto& [controller, value] :
             std::initializer_list<std::pair<int, int>>{{CTRL_ENV1_ATTACK, 60},
                                                        {CTRL_ENV1_RELEASE, 50},
                                                        {CTRL_PORTAMENTO_TIME, 60},
                                                        {CTRL_FILTER1_TYPE, 21},
                                                        {CTRL_CUTOFF1_INFLUENCE1_SOURCE, 2},
                                                        {CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 90},
                                                        {CTRL_CHANFX2_TYPE, 1},
                                                        {CTRL_AUX1_LEVEL, 90},
                                                        {CTRL_AUX2_LEVEL, 90}})
            set_controller(controller, value);
    }
};

// Everything that knows the time goes on around sample 3000: slopes, glides, delays, automation
// and events that were queued before and are played after.
std::vector<float> play_around(uint32_t start) {
    ClockedVST vst;
    vst.set_clock(start);
    vst.make_slow();
    std::vector<float> sound;
    vst.midi(0x90, 50, 100);
    vst.midi(0x90, 62, 100, 500);
    vst.midi(0x80, 50, 0, 3500);
    vst.midi(0x80, 62, 0, 5000);
    vst.midi(0x90, 57, 100, 2990);
    vst.midi(0xE0, 0, 80, 3010);
    for (int block = 0; block < 40; block++) {
        vst.set_controller(CTRL_FILTER1_CUTOFF, block * 3);
        vst.set_controller(CTRL_MAIN_VOLUME, 127 - block);
        const std::vector<float> part = vst.render(block % 2 == 0 ? 157 : 256);
        sound.insert(sound.end(), part.begin(), part.end());
    }
    EXPECT_LT(vst.get_time(), ClockedVST::limit());
    return sound;
}

TEST(TarqVST, TheClockMovesBackInaudibly) {
    const std::vector<float> at_zero = play_around(0);
    EXPECT_GT(peak(at_zero), 0.001F);
    for (const uint32_t before : {0U, 3U, 500U, 2990U, 3000U, 3011U, 3600U, 5001U, 6000U})
        ASSERT_EQ(play_around(ClockedVST::limit() - before), at_zero) << before;
}

TEST(TarqVST, NotesHeldForHoursStayAndKeepTheirOrder) {
    const auto play = [](bool hours) {
        ClockedVST vst;
        vst.set_controller(CTRL_CHAN_MAX_VOICES, 2);
        std::vector<float> sound;
        for (const unsigned note : {64U, 57U}) {
            vst.midi(0x90, note, 100);
            vst.render(44100);
        }
        for (int move = 0; move < 3; move++) {
            if (hours)
                vst.set_clock(ClockedVST::limit() - 100);
            vst.render(256);
        }
        vst.midi(0x90, 45, 100); // steals the first note's voice
        return vst.render(8192);
    };
    const std::vector<float> sound = play(true);
    EXPECT_GT(peak(sound), 0.001F);
    EXPECT_EQ(sound, play(false));
}

TEST(TarqVST, GlobalsThatFoundNoRoomFollow) {
    const auto play = [](bool is_full) {
        ClockedVST vst;
        vst.render(64);
        for (int i = 0; is_full && vst.num_queued_events() < EventQueue::CAPACITY; i++)
            vst.midi(0xB0, CTRL_AUX2_LEVEL, 0, 1000);
        vst.set_controller(CTRL_GLOBAL_FILTER1_TYPE, 1);
        for (int block = 0; block < 8; block++)
            vst.render(256);
        vst.midi(0x90, 60, 100);
        return vst.render(1024);
    };
    EXPECT_EQ(play(true), play(false));
}

TEST(TarqVST, WaitsForTheBlockSize) {
    TarqVST vst(nullptr);
    float left[8];
    float right[8];
    float* outputs[] = {left, right};
    std::fill_n(left, 8, 3.0F);
    std::fill_n(right, 8, 3.0F);
    vst.resume();
    vst.process(nullptr, outputs, 8);
    EXPECT_EQ(left[7], 3.0F);
    vst.processReplacing(nullptr, outputs, 8);
    EXPECT_EQ(left[7], 0.0F);
}

TEST(TarqVST, WarnsOnceOfAnotherSampleRate) {
    TarqVST vst(nullptr);
    testing::internal::CaptureStderr();
    vst.setSampleRate(44100.0F);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    vst.setSampleRate(48000.0F);
    vst.setSampleRate(96000.0F);
    vst.setSampleRate(NAN);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Tarquil: Sample rate was set to 48000, but sample rates other than 44100 is not "
              "supported.\nYou are on your own.\n");
}

} // namespace

} // namespace tarquil
