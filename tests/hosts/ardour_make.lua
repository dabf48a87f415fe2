-- Makes an Ardour session in the folder TARQUIL_SESSION: the plug-in on a MIDI track, two
-- parameters set, a third automated.  Prints "problem REASON" when something is not as it should be.

local FOLDER = os.getenv("TARQUIL_SESSION")
local SETTLE = "sleep 1" -- a track that is made at once meets ports that are not ready
local FORMAT = os.getenv("TARQUIL_FORMAT")
local FIRST = tonumber(os.getenv("TARQUIL_FIRST")) -- port of ours
local SHIFT = FORMAT == "LV2" and 1 or 0 -- the latency is a control as well
local PANNING, MIX, VOLUME3 = 1 + SHIFT, 32 + SHIFT, 33 + SHIFT
-- In the format's own numbers.
local VALUES = ({
    LXVST = {[MIX] = 100 / 127, [VOLUME3] = 30 / 127},
    VST3 = {[MIX] = 100, [VOLUME3] = 30},
    LV2 = {[MIX] = 100 / 127, [VOLUME3] = -20},
})[FORMAT]
local LAST = FORMAT == "VST3" and 127 or 1 -- of the panning
local SECONDS, RATE = 4, 44100

local function check(is_right, problem)
    if not is_right then
        print("problem " .. problem)
        os.exit(1)
    end
end

AudioEngine:set_backend("None (Dummy)", "", "")
os.execute(SETTLE)
os.execute("rm -rf '" .. FOLDER .. "'") -- of an attempt before
check(create_session(FOLDER, "first", RATE), "no session can be made")
os.execute(SETTLE)

local info = ARDOUR.LuaAPI.new_plugin_info("Tarquil", ARDOUR.PluginType[FORMAT])
check(not info:isnil(), "Tarquil is not among the plug-ins")
check(info.category:find("Instrument"), "its category is " .. info.category)
local midi = ARDOUR.ChanCount(ARDOUR.DataType("midi"), 1)
local stereo = ARDOUR.ChanCount(ARDOUR.DataType("audio"), 2)
local tracks = Session:new_midi_track(midi, stereo, true, info, ARDOUR.PresetRecord(), nil, 1, "synth",
    ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true)
local plugin = tracks:front():nth_plugin(0)
check(not plugin:isnil(), "it was not loaded onto the track")
local insert = plugin:to_insert()
check(insert:is_instrument(), "the track does not take it for an instrument")
local count = insert:plugin(0):parameter_count()
check(count == tonumber(os.getenv("TARQUIL_PARAMETERS")), "it has " .. count .. " parameters")
print(count .. " parameters")

-- On a busy machine Ardour itself now and then leaves a new track unconnected.
for side = 0, 1 do
    local output = tracks:front():output():audio(side)
    local input = Session:master_out():input():audio(side):name()
    if not output:connected_to(input) then
        output:connect(input)
    end
    check(output:connected_to(input), "the track is not connected to the master")
end

for parameter, wanted in pairs(VALUES) do
    ARDOUR.LuaAPI.set_processor_param(plugin, parameter, wanted)
    local value = ARDOUR.LuaAPI.get_processor_param(plugin, parameter)
    check(math.abs(value - wanted) < 1e-6, "parameter " .. parameter .. " reads " .. value)
end

local _, events = ARDOUR.LuaAPI.plugin_automation(plugin, PANNING)
-- From where it is, so that the state at the song's start is the one that is saved.
local start = ARDOUR.LuaAPI.get_processor_param(plugin, PANNING)
for i = 0, SECONDS do
    events:add(Temporal.timepos_t(i * RATE), start + (LAST - start) * i / SECONDS, false, true)
end
local parameter = Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, FIRST + 1)
local control = plugin:to_automatable():automation_control(parameter, false)
check(not control:isnil(), "the panning can not be automated")
control:set_automation_state(ARDOUR.AutoState.Play)

os.execute(SETTLE) -- what was set is the plug-in's with its next block
Session:save_state("", false, false, false, false, false)
close_session()
quit()
