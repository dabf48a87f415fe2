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
};

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
