// A folder with a song to render, and the render command.

#pragma once

#include <gmock/gmock.h>

#include "tests/midi/smf/smf_builder.h"
#include "tests/temp_directory.h"
#include "tests/tools/command_run.h"

namespace tarquil {

using testing::HasSubstr;

class RenderFixture : public testing::Test {
  protected:
    void save(const std::string& name, const std::string& text) {
        ASSERT_EQ(save_file_to_string(directory.path(name), text), 0);
    }
    void save(const std::string& name, const SmfBytes& bytes) {
        save(name, std::string(bytes.begin(), bytes.end()));
    }

    // With options and files as they stand.
    static CommandRun render(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "render");
        return run_command(arguments);
    }
    // With options: the song to `out`.
    CommandRun render_song(std::vector<std::string> options) {
        options.insert(options.end(), {song, out});
        return render(options);
    }
    // The file that this makes.
    std::string rendered(const std::vector<std::string>& options) {
        const CommandRun run = render_song(options);
        EXPECT_EQ(run.status, 0) << run.errors;
        return file_text(out);
    }

    TempDirectory directory;
    std::string song = directory.path("song.mid");
    std::string out = directory.path("out.wav");
};

} // namespace tarquil
