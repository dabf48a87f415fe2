// Writes the description of the plug-in that hosts read before they load it.
//
//   write_turtle DIRECTORY MODULE [ui]

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "common/number_text.h"
#include "formats/common/preset_banks.h"
#include "formats/lv2/lv2_names.h"
#include "formats/lv2/port_change_request.h"
#include "formats/lv2/port_table.h"

namespace tarquil {

namespace {

constexpr const char* PREFIXES = R"(@prefix atom: <http://lv2plug.in/ns/ext/atom#> .
@prefix doap: <http://usefulinc.com/ns/doap#> .
@prefix lv2: <http://lv2plug.in/ns/lv2core#> .
@prefix midi: <http://lv2plug.in/ns/ext/midi#> .
@prefix opts: <http://lv2plug.in/ns/ext/options#> .
@prefix patch: <http://lv2plug.in/ns/ext/patch#> .
@prefix pg: <http://lv2plug.in/ns/ext/port-groups#> .
@prefix pprops: <http://lv2plug.in/ns/ext/port-props#> .
@prefix pset: <http://lv2plug.in/ns/ext/presets#> .
@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .
@prefix rsz: <http://lv2plug.in/ns/ext/resize-port#> .
@prefix state: <http://lv2plug.in/ns/ext/state#> .
@prefix tarquil: <)" TARQUIL_LV2_PREFIX R"(> .
@prefix time: <http://lv2plug.in/ns/ext/time#> .
@prefix ui: <http://lv2plug.in/ns/extensions/ui#> .
@prefix units: <http://lv2plug.in/ns/extensions/units#> .
@prefix urid: <http://lv2plug.in/ns/ext/urid#> .
@prefix work: <http://lv2plug.in/ns/ext/worker#> .
)";

// Room for one that sets every parameter at once.
constexpr int SEQUENCE_BYTES = 1 << 17;

// "Program/Filter" as a name that Turtle allows.
std::string group_symbol(std::string_view group) {
    std::string symbol;
    for (const char c : group)
        symbol += c == '/' || c == ' ' ? '_' : c;
    return symbol;
}

std::string group_name(std::string_view group) {
    return std::string(group.substr(group.find('/') + 1));
}

std::string decimal(double value) {
    std::string text = trimmed_number(value, 6);
    if (text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

void write_groups(std::ostream& out) {
    std::set<std::string_view> written;
    for (const Lv2Control& control : lv2_controls()) {
        const std::string_view group = control.shown().group;
        if (!written.insert(group).second)
            continue;
        const std::string symbol = group_symbol(group);
        out << "\ntarquil:" << symbol << "\n    a pg:InputGroup ;\n    lv2:name \""
            << group_name(group) << "\" ;\n    lv2:symbol \"" << symbol << "\" .\n";
    }
}

void write_control(std::ostream& out, uint32_t index, const Lv2Control& control) {
    const ControllerInfo& info = control.info();
    const auto number = [&](float value) {
        return control.is_integer() ? std::to_string(int(value)) : decimal(double(value));
    };
    out << " , [\n        a lv2:InputPort , lv2:ControlPort ;\n        lv2:index " << index
        << " ;\n        lv2:symbol \"" << info.key << "\" ;\n        lv2:name \""
        << control.shown().name << "\" ;\n        lv2:default " << number(control.default_value())
        << " ;\n        lv2:minimum " << number(control.lowest()) << " ;\n        lv2:maximum "
        << number(control.highest())
        << " ;\n        pg:group tarquil:" << group_symbol(control.shown().group);
    if (control.unit() != nullptr)
        out << " ;\n        units:unit " << control.unit();
    if (control.is_integer())
        out << " ;\n        lv2:portProperty lv2:integer";
    if (control.is_logarithmic())
        out << " ;\n        lv2:portProperty pprops:logarithmic";
    if (!info.choices.labels.empty()) {
        out << " ;\n        lv2:portProperty lv2:enumeration";
        for (unsigned byte = info.choices.first; byte <= info.choices.last; byte++)
            out << " ;\n        lv2:scalePoint [ rdfs:label \""
                << info.choices.labels[byte - info.choices.first] << "\" ; rdf:value " << byte
                << " ]";
    }
    out << "\n    ]";
}

std::string preset_symbol(const PresetBank& bank, unsigned program) {
    return "tarquil:" + std::string(bank.symbol) + "_" + std::to_string(program);
}

// As Turtle's long strings have it.
std::string turtle_string(std::string_view text) {
    std::string out = "\"\"\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + "\"\"\"";
}

void write_preset_list(std::ostream& out) {
    for (const PresetBank& bank : PRESET_BANKS) {
        for (unsigned program = 0; program < MAX_INSTRUMENTS; program++)
            out << "\n"
                << preset_symbol(bank, program) << "\n    a pset:Preset ;\n    lv2:appliesTo <"
                << TARQUIL_LV2_URI << "> ;\n    rdfs:seeAlso <presets.ttl> .\n";
    }
}

// A preset is one sound: the state of the program that is edited.
void write_presets(std::ostream& out) {
    out << PREFIXES;
    out << R"(@prefix owl: <http://www.w3.org/2002/07/owl#> .
@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .
@prefix xsd: <http://www.w3.org/2001/XMLSchema#> .

tarquil:state
    a rdf:Property , owl:DatatypeProperty ;
    rdfs:label "state" ;
    rdfs:comment "A bank or an instrument as text." ;
    rdfs:range xsd:string .
)";
    for (const PresetBank& bank : PRESET_BANKS) {
        const std::string bank_symbol = "tarquil:" + std::string(bank.symbol);
        out << "\n"
            << bank_symbol << "\n    a pset:Bank ;\n    rdfs:label \"" << bank.name << "\" .\n";
        for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
            const Instrument& instrument = bank.bank().get_instrument(program);
            out << "\n"
                << preset_symbol(bank, program) << "\n    a pset:Preset ;\n    lv2:appliesTo <"
                << TARQUIL_LV2_URI << "> ;\n    pset:bank " << bank_symbol << " ;\n    rdfs:label "
                << turtle_string(instrument.get_name()) << " ;\n    state:state [ tarquil:state "
                << turtle_string(instrument.save_changes_to_string()) << " ] .\n";
        }
    }
}

void write_manifest(std::ostream& out, const std::string& module, bool has_ui) {
    out << PREFIXES << "\n<" TARQUIL_LV2_URI ">\n    a lv2:Plugin ;\n    lv2:binary <" << module
        << "> ;\n    rdfs:seeAlso <tarquil.ttl> .\n";
    if (has_ui)
        out << "\n<" TARQUIL_LV2_UI_URI ">\n    a ui:X11UI ;\n    ui:binary <" << module
            << "> ;\n    rdfs:seeAlso <tarquil.ttl> .\n";
    write_preset_list(out);
}

void write_fixed_ports(std::ostream& out) {
    out << R"(    lv2:port [
        a lv2:InputPort , atom:AtomPort ;
        atom:bufferType atom:Sequence ;
        atom:supports midi:MidiEvent , patch:Message , time:Position ;
        lv2:designation lv2:control ;
        lv2:index 0 ;
        lv2:symbol "events" ;
        lv2:name "Events" ;
        rsz:minimumSize )"
        << SEQUENCE_BYTES << R"(
    ] , [
        a lv2:OutputPort , atom:AtomPort ;
        atom:bufferType atom:Sequence ;
        atom:supports patch:Message ;
        lv2:designation lv2:control ;
        lv2:index 1 ;
        lv2:symbol "notify" ;
        lv2:name "Notify"
    ] , [
        a lv2:OutputPort , lv2:AudioPort ;
        lv2:index 2 ;
        lv2:symbol "left" ;
        lv2:name "Left" ;
        pg:group tarquil:output ;
        lv2:designation pg:left
    ] , [
        a lv2:OutputPort , lv2:AudioPort ;
        lv2:index 3 ;
        lv2:symbol "right" ;
        lv2:name "Right" ;
        pg:group tarquil:output ;
        lv2:designation pg:right
    ] , [
        a lv2:OutputPort , lv2:ControlPort ;
        lv2:index 4 ;
        lv2:symbol "latency" ;
        lv2:name "Latency" ;
        lv2:minimum 0 ;
        lv2:maximum 8192 ;
        lv2:designation lv2:latency ;
        lv2:portProperty lv2:reportsLatency , lv2:integer , lv2:connectionOptional ;
        units:unit units:frame
    ])";
}

void write_plugin(std::ostream& out, bool has_ui) {
    out << PREFIXES << R"(@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .

tarquil:output
    a pg:StereoGroup , pg:OutputGroup ;
    lv2:name "Output" ;
    lv2:symbol "output" .
)";
    write_groups(out);
    out << R"(
tarquil:program
    a lv2:Parameter ;
    rdfs:label "Program" ;
    rdfs:comment "The program that is edited, which channel 1 plays." ;
    rdfs:range atom:Int ;
    lv2:minimum 0 ;
    lv2:maximum 127 .

tarquil:file
    a lv2:Parameter ;
    rdfs:label "Bank or instrument" ;
    rdfs:comment "A bank, or an instrument for the program that is edited." ;
    rdfs:range atom:Path .

<)" LV2_PORT_CHANGE_REQUEST_URI R"(>
    a lv2:Feature .

<)" TARQUIL_LV2_URI R"(>
    a lv2:InstrumentPlugin , lv2:Plugin ;
    doap:name "Tarquil" ;
    doap:license <http://spdx.org/licenses/ISC> ;
    rdfs:comment "A synthesizer with sixteen MIDI channels and 128 programs." ;
    lv2:minorVersion 2 ;
    lv2:microVersion 0 ;
    lv2:requiredFeature urid:map ;
    lv2:optionalFeature lv2:hardRTCapable , state:threadSafeRestore , work:schedule ,
        <)" LV2_PORT_CHANGE_REQUEST_URI R"(> ;
    lv2:extensionData state:interface , work:interface ;
    patch:writable tarquil:program , tarquil:file ;
)";
    if (has_ui)
        out << "    ui:ui <" TARQUIL_LV2_UI_URI "> ;\n";
    out << "    pg:mainOutput tarquil:output ;\n";
    write_fixed_ports(out);
    uint32_t index = NUM_FIXED_LV2_PORTS;
    for (const Lv2Control& control : lv2_controls())
        write_control(out, index++, control);
    out << " .\n";
    if (has_ui)
        out << "\n<" TARQUIL_LV2_UI_URI R"(>
    a ui:X11UI ;
    lv2:requiredFeature ui:idleInterface , <http://lv2plug.in/ns/ext/instance-access> ;
    lv2:optionalFeature ui:parent , ui:resize ;
    lv2:extensionData ui:idleInterface .
)";
}

int run(const std::filesystem::path& directory, const std::string& module, bool has_ui) {
    std::filesystem::create_directories(directory);
    std::ofstream manifest(directory / "manifest.ttl");
    write_manifest(manifest, module, has_ui);
    manifest.close();
    std::ofstream presets(directory / "presets.ttl");
    write_presets(presets);
    presets.close();
    std::ofstream plugin(directory / "tarquil.ttl");
    write_plugin(plugin, has_ui);
    plugin.close();
    if (manifest && presets && plugin)
        return 0;
    std::fprintf(stderr, "write_turtle: %s cannot be written\n", directory.c_str());
    return 2;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: write_turtle DIRECTORY MODULE [ui]\n");
        return 2;
    }
    return tarquil::run(argv[1], argv[2], argc > 3 && std::strcmp(argv[3], "ui") == 0);
}
