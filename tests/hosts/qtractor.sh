# Qtractor: what its scanner finds.  Qtractor itself opens no session without the kernel's MIDI
# sequencer, which machines without a screen do not have.
# Sourced by run.sh, which gives `plugin` and the functions.

# The scanner takes one line per read.
scan() {
    { sleep 0.5; echo "VST:$plugin"; sleep 1; } |
        QT_QPA_PLATFORM=offscreen timeout 20 /usr/lib/*/qtractor/qtractor_plugin_scan
}

# Name, audio inputs and outputs, MIDI inputs and outputs, parameters.
seen=$(scan 2>&1) || true
expect "Qtractor's scanner finds it" grep -F "VST|Tarquil|0:2|1:0|173:0|" <<<"$seen"
