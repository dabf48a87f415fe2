// Makes the banks that come with the program from their sources, as files and as a source to
// compile:  tarquil_make_sounds SOURCES OUTPUT

#include <cstdio>
#include <string>

#include "common/failure.h"
#include "common/load_string.h"
#include "sounds/packed_bank.h"
#include "sounds/sound_sources.h"

namespace tarquil {

namespace {

void save(const std::string& path, const std::string& text) {
    if (save_file_to_string(path, text) != 0)
        throw Failure(STATUS_CANNOT, path + ": cannot be written");
}

void save(const std::string& path, const TarqSettings& bank) {
    std::string text;
    bank.text_save_to_string(text);
    save(path, text);
}

// A function that gives the bytes, which lie in the program's read-only part.
std::string as_source(const std::string& name, const std::string& bytes) {
    constexpr size_t BYTES_IN_LINE = 24;
    std::string text = "\nstd::string_view " + name + "() {\n    static constexpr char BYTES[] = {";
    for (size_t i = 0; i < bytes.size(); i++) {
        text += i % BYTES_IN_LINE == 0 ? "\n        " : " ";
        text += std::to_string(int(bytes[i])) + ",";
    }
    return text + "\n    };\n    return {BYTES, sizeof(BYTES)};\n}\n";
}

void make(const std::string& sources_folder, const std::string& output) {
    const SoundSources sources = read_sound_sources(sources_folder);
    save(output + "/gm.tqb", sources.gm);
    save(output + "/gm-drums.tqb", sources.drums);
    save(output + "/originals.tqb", sources.originals);
    save(output + "/gm.tqm", sources.map_text);
    save(output + "/originals.tqm", sources.originals_map_text);
    save(output + "/shipped_data.cpp",
         "// Made from the folder sounds/.\n\n"
         "#include \"sounds/shipped_data.h\"\n\n"
         "namespace tarquil {\n" +
             as_source("packed_gm_bank", pack_bank(sources.gm)) +
             as_source("packed_gm_drums", pack_bank(sources.drums)) +
             as_source("packed_originals", pack_bank(sources.originals)) +
             as_source("gm_map_text", sources.map_text) +
             as_source("originals_map_text", sources.originals_map_text) +
             "\n} // namespace tarquil\n");
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: tarquil_make_sounds SOURCES OUTPUT\n", stderr);
        return tarquil::STATUS_BAD_INPUT;
    }
    try {
        tarquil::make(argv[1], argv[2]);
    } catch (const tarquil::Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return failure.get_status();
    }
    return 0;
}
