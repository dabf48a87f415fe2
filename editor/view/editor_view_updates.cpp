// The whole editor as a picture: what changes in it by itself.

#include "editor/view/editor_view.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

constexpr double LIGHT_SECONDS = 0.25;
constexpr double METER_PERIOD = 1.0 / 30; // seconds: smooth to the eye
constexpr double NOTICE_PERIOD = 0.3;     // seconds

} // namespace

bool EditorView::update_meters(double seconds) {
    const EditorMeters now = model.get_synth().read_meters();
    bool is_new = now.voices != meters.voices || now.band_levels != meters.band_levels ||
                  now.band_gains != meters.band_gains || now.note != meters.note;
    meters = now;
    const LevelMeter before = level_meter;
    level_meter.update(now.peaks, seconds);
    is_new = is_new || before.get_peak() != level_meter.get_peak();
    for (unsigned side = 0; side < 2; side++)
        is_new = is_new || before.get_level(side) != level_meter.get_level(side) ||
                 before.get_hold(side) != level_meter.get_hold(side);
    for (unsigned channel = 0; channel < channel_lights.size(); channel++) {
        double& light = channel_lights[channel];
        const double last = light;
        const bool has_note = (now.active_channels >> channel & 1U) != 0;
        light = has_note ? 1.0 : std::max(0.0, light - seconds / LIGHT_SECONDS);
        is_new = is_new || light != last;
    }
    is_new = hands.update() || is_new;
    return update_scope(seconds) || is_new;
}

bool EditorView::update_notice(double seconds) {
    until_notice -= seconds;
    if (until_notice > 0.0)
        return false;
    until_notice = NOTICE_PERIOD;
    EditorNotice now = model.get_synth().read_notice();
    const bool is_new = now != status.notice;
    status.notice = std::move(now);
    return is_new;
}

bool EditorView::update_learning() {
    const std::optional<unsigned> target = model.learning();
    const std::optional<unsigned> heard = model.finish_learning();
    if (!heard)
        return false;
    show_message(std::string(find_controller(*target)->name) + " is moved by MIDI controller " +
                     std::to_string(*heard) + " now",
                 MessageKind::DONE);
    return true;
}

// What follows the host's tempo is drawn at it.
bool EditorView::update_tempo() {
    constexpr double SAME = 0.005; // quarter notes a minute
    const bool is_followed = model.get_state().tempo_sync;
    const bool is_new = is_followed != view_state.times.is_on() ||
                        (is_followed && std::abs(meters.tempo - view_state.tempo) > SAME);
    if (!is_new)
        return false;
    view_state.tempo = meters.tempo;
    view_state.times.follow(is_followed ? view_state.samples_per_quarter() : 0.0);
    return true;
}

bool EditorView::update_scope(double seconds) {
    const auto& widgets = pages[current_page].widgets;
    const bool is_shown = std::any_of(widgets.begin(), widgets.end(),
                                      [](const auto& widget) { return widget->shows_output(); });
    view_state.scope.follow(model.get_synth(), is_shown);
    return is_shown && view_state.scope.update(model.get_synth(), seconds);
}

bool EditorView::tick(double seconds) {
    model.pass_time(seconds);
    const bool had_tooltip = still_for >= TOOLTIP_DELAY;
    still_for += seconds;
    const bool is_tooltip_due = !had_tooltip && still_for >= TOOLTIP_DELAY && hovered != nullptr;
    const bool is_model_new = may_have_changed.exchange(false) && model.refresh();
    const bool is_response_new = responses.refresh();
    const bool is_notice_new = update_notice(seconds);
    const bool is_learned = update_learning();
    is_changed = is_changed || is_tooltip_due || is_model_new || is_response_new || is_notice_new ||
                 is_learned;
    if (!overlays.empty()) {
        is_changed = overlays.back()->pass_time(seconds) || is_changed;
        drop_finished_overlays();
    }
    model.strike_if_due(settings.strikes_again);
    until_meters -= seconds;
    since_meters += seconds;
    if (until_meters <= 0.0) {
        are_meters_new = update_meters(since_meters) || are_meters_new;
        until_meters = METER_PERIOD;
        since_meters = 0.0;
    }
    is_changed = update_tempo() || is_changed;
    return is_changed || are_meters_new;
}

} // namespace tarquil
