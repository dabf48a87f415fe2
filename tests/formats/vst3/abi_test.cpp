// Our records against those of a second writing of the interface.

#include "formats/vst3/abi/component.h"
#include "formats/vst3/abi/controller.h"
#include "formats/vst3/abi/factory.h"
#include "formats/vst3/abi/view.h"

#include <cstddef>

#include <gtest/gtest.h>

#include <travesty/audio_processor.h>
#include <travesty/component.h>
#include <travesty/edit_controller.h>
#include <travesty/events.h>
#include <travesty/factory.h>
#include <travesty/unit.h>
#include <travesty/view.h>

namespace tarquil::vst3 {
namespace {

template <typename Interface> bool is_same(const v3_tuid& id) {
    return is_id(id, Interface::ID);
}

TEST(Vst3Abi, InterfacesHaveTheirIdentities) {
    EXPECT_TRUE(is_same<Unknown>(v3_funknown_iid));
    EXPECT_TRUE(is_same<PluginBase>(v3_plugin_base_iid));
    EXPECT_TRUE(is_same<Stream>(v3_bstream_iid));
    EXPECT_TRUE(is_same<Factory>(v3_plugin_factory_iid));
    EXPECT_TRUE(is_same<Factory2>(v3_plugin_factory_2_iid));
    EXPECT_TRUE(is_same<Factory3>(v3_plugin_factory_3_iid));
    EXPECT_TRUE(is_same<Component>(v3_component_iid));
    EXPECT_TRUE(is_same<AudioProcessor>(v3_audio_processor_iid));
    EXPECT_TRUE(is_same<ProcessContextRequirements>(v3_process_context_requirements_iid));
    EXPECT_TRUE(is_same<EventList>(v3_event_list_iid));
    EXPECT_TRUE(is_same<ParameterPoints>(v3_param_value_queue_iid));
    EXPECT_TRUE(is_same<ParameterChanges>(v3_param_changes_iid));
    EXPECT_TRUE(is_same<EditController>(v3_edit_controller_iid));
    EXPECT_TRUE(is_same<MidiMapping>(v3_midi_mapping_iid));
    EXPECT_TRUE(is_same<UnitInformation>(v3_unit_information_iid));
    EXPECT_TRUE(is_same<ComponentHandler>(v3_component_handler_iid));
    EXPECT_TRUE(is_same<ComponentHandler2>(v3_component_handler2_iid));
    EXPECT_TRUE(is_same<View>(v3_plugin_view_iid));
    EXPECT_TRUE(is_same<PlugFrame>(v3_plugin_frame_iid));
    EXPECT_TRUE(is_same<ContentScale>(v3_plugin_view_content_scale_iid));
    EXPECT_TRUE(is_same<EventHandler>(v3_event_handler_iid));
    EXPECT_TRUE(is_same<TimerHandler>(v3_timer_handler_iid));
    EXPECT_TRUE(is_same<RunLoop>(v3_run_loop_iid));
}

TEST(Vst3Abi, RecordsHaveTheirLayouts) {
    EXPECT_EQ(sizeof(Event), sizeof(v3_event));
    EXPECT_EQ(offsetof(Event, note_on), offsetof(v3_event, note_on));
    EXPECT_EQ(offsetof(NoteOn, velocity), offsetof(v3_event_note_on, velocity));
    EXPECT_EQ(offsetof(NoteOff, velocity), offsetof(v3_event_note_off, velocity));
    EXPECT_EQ(offsetof(KeyPressure, pressure), offsetof(v3_event_poly_pressure, pressure));
    EXPECT_EQ(offsetof(DataEvent, bytes), offsetof(v3_event_data, bytes));
    EXPECT_EQ(offsetof(ProcessData, outputs), offsetof(v3_process_data, outputs));
    EXPECT_EQ(offsetof(ProcessData, context), offsetof(v3_process_data, ctx));
    EXPECT_EQ(sizeof(ProcessContext), sizeof(v3_process_context));
    EXPECT_EQ(offsetof(ProcessContext, position_quarters),
              offsetof(v3_process_context, project_time_quarters));
    EXPECT_EQ(offsetof(ProcessContext, bar_quarters),
              offsetof(v3_process_context, bar_position_quarters));
    EXPECT_EQ(offsetof(ProcessContext, quarters_per_minute), offsetof(v3_process_context, bpm));
    EXPECT_EQ(offsetof(ProcessContext, time_signature_beats),
              offsetof(v3_process_context, time_sig_numerator));
    EXPECT_EQ(IS_PLAYING | HAS_POSITION | HAS_TEMPO | HAS_BAR | HAS_TIME_SIGNATURE,
              uint32_t(V3_PROCESS_CTX_PLAYING | V3_PROCESS_CTX_PROJECT_TIME_VALID |
                       V3_PROCESS_CTX_TEMPO_VALID | V3_PROCESS_CTX_BAR_POSITION_VALID |
                       V3_PROCESS_CTX_TIME_SIG_VALID));
    EXPECT_EQ(NEEDS_POSITION | NEEDS_BAR | NEEDS_TEMPO | NEEDS_TIME_SIGNATURE |
                  NEEDS_TRANSPORT_STATE,
              uint32_t(V3_PROCESS_CTX_NEED_PROJECT_TIME | V3_PROCESS_CTX_NEED_BAR_POSITION |
                       V3_PROCESS_CTX_NEED_TEMPO | V3_PROCESS_CTX_NEED_TIME_SIG |
                       V3_PROCESS_CTX_NEED_TRANSPORT_STATE));
    EXPECT_EQ(offsetof(ProcessData, input_changes), offsetof(v3_process_data, input_params));
    EXPECT_EQ(offsetof(ProcessData, input_events), offsetof(v3_process_data, input_events));
    EXPECT_EQ(offsetof(AudioBuffers, channels_32),
              offsetof(v3_audio_bus_buffers, channel_buffers_32));
    EXPECT_EQ(offsetof(ProcessSetup, rate), offsetof(v3_process_setup, sample_rate));
    EXPECT_EQ(offsetof(BusInfo, flags), offsetof(v3_bus_info, flags));
    EXPECT_EQ(offsetof(ParameterInfo, default_value),
              offsetof(v3_param_info, default_normalised_value));
    EXPECT_EQ(offsetof(ParameterInfo, flags), offsetof(v3_param_info, flags));
    EXPECT_EQ(offsetof(UnitInfo, program_list), offsetof(v3_unit_info, program_list_id));
    EXPECT_EQ(offsetof(ProgramListInfo, num_programs),
              offsetof(v3_program_list_info, programCount));
    EXPECT_EQ(sizeof(ClassInfo), sizeof(v3_class_info));
    EXPECT_EQ(offsetof(ClassInfo2, vendor), offsetof(v3_class_info_2, vendor));
    EXPECT_EQ(offsetof(ClassInfo3, version), offsetof(v3_class_info_3, version));
}

} // namespace
} // namespace tarquil::vst3
