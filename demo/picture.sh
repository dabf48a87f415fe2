#!/bin/sh
# Draws the waveform and the spectrogram of a sound file: picture.sh SOUND OUT.png
# Needs the packages sox and imagemagick.
set -eu
[ $# -eq 2 ] || { echo "usage: picture.sh SOUND OUT.png" >&2; exit 2; }
width=1200
height=150
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A picture in plain text: each column is lit from its lowest to its highest sample.
frames=$(soxi -s "$1")
sox "$1" -t dat - remix 1,2 | awk -v width=$width -v height=$height -v frames="$frames" '
    /^;/ { next }
    {
        column = int(n++ * width / frames)
        if ($2 < low[column]) low[column] = $2
        if ($2 > high[column]) high[column] = $2
    }
    END {
        print "P3", width, height, 255
        for (y = 0; y < height; y++) {
            level = 1 - 2 * (y + 0.5) / height
            for (x = 0; x < width; x++) {
                near = level <= high[x] + 1 / height && level >= low[x] - 1 / height
                print near ? "224 163 74" : "16 19 28"
            }
        }
    }' >"$work/wave.ppm"
convert "$work/wave.ppm" "$work/wave.png"
sox "$1" -n remix 1,2 spectrogram -r -x $width -y 257 -z 100 -o "$work/spectrum.png"
convert "$work/wave.png" "$work/spectrum.png" -append -depth 8 -colors 160 "PNG8:$2"
