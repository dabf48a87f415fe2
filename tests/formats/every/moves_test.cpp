// What learned MIDI controllers move is told the host by every format, while no window is open.

#include <gmock/gmock.h>

#include "tests/formats/every/every_format.h"

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr uint8_t TAUGHT = 20;
const std::string PANNING = std::to_string(CTRL_PANNING);

std::string plain_taught_state() {
    HostedPlayer player;
    LearnedControls learned;
    learned.learn(TAUGHT, CTRL_PANNING);
    learned.learn(74, CTRL_FILTER1_TYPE);
    player.player().set_learned(learned);
    return player.save_state();
}

using Moves = EveryFormat;

TEST_P(Moves, OfLearnedControllersAreToldTheHostOnce) {
    const auto plugin = start_at(44100, plain_taught_state());
    const auto told_after = [&](std::initializer_list<SongMessage> messages, uint32_t frames) {
        for (const SongMessage& message : messages)
            plugin->add(message);
        plugin->run(frames);
        return plugin->take_told();
    };
    const bool has_gestures = plugin->tells_gestures();
    told_after({}, 512);
    EXPECT_THAT(told_after({{3, {0xB5, 21, 5}}, {4, {0xB5, CTRL_PANNING, 9}}}, 512), IsEmpty());

    std::vector<std::string> wanted = {PANNING + " = 127"};
    if (has_gestures)
        wanted.insert(wanted.begin(), "begin " + PANNING);
    EXPECT_THAT(told_after({{10, {0xB5, TAUGHT, 100}}, {20, {0xB3, TAUGHT, 127}}}, 512),
                ElementsAreArray(wanted));
    EXPECT_THAT(told_after({{10, {0xB5, TAUGHT, 127}}}, 512), IsEmpty()) << "it moves nothing";
    EXPECT_THAT(told_after({{10, {0xB5, TAUGHT, 90}}}, 512), ElementsAre(PANNING + " = 90"));

    // Hosts without gestures may hand older values back.
    if (!has_gestures)
        plugin->set(CTRL_PANNING, 127, 0);
    EXPECT_THAT(told_after({}, 512), IsEmpty());
    HostedPlayer saved;
    ASSERT_EQ(saved.load_state(plugin->save()), 0);
    EXPECT_EQ(saved.player().get_controller(CTRL_PANNING), 90);

    for (int i = 0; i < 20; i++)
        plugin->run(1000);
    EXPECT_THAT(plugin->take_told(), IsEmpty()) << "it may be moved on";
    for (int i = 0; i < 20; i++)
        plugin->run(1000);
    EXPECT_EQ(plugin->take_told(),
              has_gestures ? std::vector{"end " + PANNING} : std::vector<std::string>());
}

FOR_EVERY_FORMAT(Moves);

} // namespace

} // namespace tarquil
