-- Prints number and value of each parameter of the plug-in in a session of ardour_make.lua.

if not load_session(os.getenv("TARQUIL_SESSION"), "first") then
    print("problem the session does not load")
    os.exit(1)
end
os.execute("sleep 1")
local plugin = Session:route_by_name("synth"):nth_plugin(0)
for i = 0, tonumber(os.getenv("TARQUIL_PARAMETERS")) - 1 do
    local value, is_there = ARDOUR.LuaAPI.get_processor_param(plugin, i)
    if is_there then
        print(string.format("parameter %d %.6f", i, value))
    end
end
close_session()
quit()
