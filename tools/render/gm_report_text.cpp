// What became of a General MIDI song's messages.

#include "tools/render/gm_report_text.h"

#include <utility>
#include <vector>

namespace tarquil {

namespace {

using Counts = std::vector<std::pair<std::string, uint64_t>>;

Counts counts_of(const GmReport& report, Verdict verdict) {
    Counts counts;
    for (unsigned i = 0; i < NUM_GM_MESSAGES; i++) {
        const auto kind = GmMessage(i);
        if (report.kinds[i] != 0 && gm_message_verdict(kind) == verdict)
            counts.emplace_back(gm_message_name(kind), report.kinds[i]);
    }
    for (unsigned number = 0; number < report.controllers.size(); number++) {
        if (report.controllers[number] == 0 || midi_controller_verdict(number) != verdict)
            continue;
        const std::string name = midi_controller_name(number);
        counts.emplace_back("controller " + std::to_string(number) +
                                (name.empty() ? "" : " (" + name + ")"),
                            report.controllers[number]);
    }
    return counts;
}

Counts shortfalls_of(const GmReport& report) {
    Counts counts;
    for (unsigned i = 0; i < NUM_GM_SHORTFALLS; i++)
        if (report.shortfalls[i] != 0)
            counts.emplace_back(gm_shortfall_name(GmShortfall(i)), report.shortfalls[i]);
    return counts;
}

std::string line_of(const char* title, const Counts& counts) {
    if (counts.empty())
        return "";
    std::string line = std::string(title) + ":";
    for (const auto& [name, count] : counts)
        line += (line.back() == ':' ? " " : ", ") + name + " " + std::to_string(count);
    return line + "\n";
}

nlohmann::ordered_json object_of(const Counts& counts) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (const auto& [name, count] : counts)
        object[name] = count;
    return object;
}

} // namespace

std::string gm_report_text(const GmReport& report, unsigned most_voices) {
    std::string text = "General MIDI: " + std::to_string(report.messages) + " messages, at most " +
                       std::to_string(most_voices) + " voices of an engine\n";
    text += line_of("played", counts_of(report, Verdict::PLAYED));
    text += line_of("approximated", counts_of(report, Verdict::APPROXIMATED));
    text += line_of("ignored", counts_of(report, Verdict::IGNORED));
    text += line_of("not as asked", shortfalls_of(report));
    return text;
}

nlohmann::ordered_json gm_report_json(const GmReport& report, unsigned most_voices) {
    return {
        {"messages", report.messages},
        {"most_voices", most_voices},
        {"played", object_of(counts_of(report, Verdict::PLAYED))},
        {"approximated", object_of(counts_of(report, Verdict::APPROXIMATED))},
        {"ignored", object_of(counts_of(report, Verdict::IGNORED))},
        {"shortfalls", object_of(shortfalls_of(report))},
    };
}

} // namespace tarquil
