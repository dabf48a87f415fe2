-- Opens the session of ardour_make.lua again, looks at the parameters and saves it as "second".

local FORMAT = os.getenv("TARQUIL_FORMAT")
local SHIFT = FORMAT == "LV2" and 1 or 0 -- the latency is a control as well
local MIX, VOLUME3 = 32 + SHIFT, 33 + SHIFT
local VALUES = ({
    LXVST = {[MIX] = 100 / 127, [VOLUME3] = 30 / 127},
    VST3 = {[MIX] = 100, [VOLUME3] = 30},
    LV2 = {[MIX] = 100 / 127, [VOLUME3] = -20},
})[FORMAT]

local function check(is_right, problem)
    if not is_right then
        print("problem " .. problem)
        os.exit(1)
    end
end

check(load_session(os.getenv("TARQUIL_SESSION"), "first"), "the session does not load")
os.execute("sleep 1")
local plugin = Session:route_by_name("synth"):nth_plugin(0)
check(not plugin:isnil(), "the plug-in is not there")
for parameter, wanted in pairs(VALUES) do
    local value = ARDOUR.LuaAPI.get_processor_param(plugin, parameter)
    check(math.abs(value - wanted) < 1e-6, "parameter " .. parameter .. " reads " .. value)
end
Session:save_state("second", false, false, false, false, false)
close_session()
quit()
