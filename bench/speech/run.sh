#!/usr/bin/env bash
# Speech measured: run.sh TARQUIL SPEECH_QUALITY PAD.tqi
# Distances of decoded speech from its recordings, how fast it is, and how many words a recogniser
# understands of the original, of the decoded and whispered sentences and of a pad that speaks them.
set -euo pipefail
readonly tarquil=$(readlink -f "$1") quality=$(readlink -f "$2") pad=$(readlink -f "$3")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir original

# Two voices that the recogniser understands; texts of our own.
readonly SENTENCES=(
    "the old clock on the wall had stopped at twenty minutes past seven"
    "she walked along the river until the rain began to fall"
    "we should leave before sunrise if we want to see the mountains"
    "my brother keeps three brown dogs and a very lazy cat"
    "please put the heavy boxes on the table near the window"
    "the teacher asked the children to open their books and read the first page"
    "there is a small shop on the corner that sells fresh bread every morning"
    "in the winter the lake is frozen and people come from far away to skate"
    "he could not remember where he had left the keys to his car"
    "the train to the city leaves at nine and arrives before noon"
    "we sat around the fire and told stories until it was very late"
    "the government said that the price of oil would rise again next year"
    "her sister works in a large hospital and often has to work at night"
    "after the storm the streets were covered with leaves and broken branches"
    "you have to turn left at the church and then go straight for two miles"
)
for number in "${!SENTENCES[@]}"; do
    for voice in rms slt; do
        flite -voice "$voice" -t "${SENTENCES[number]}" -o "original/$voice-$number.wav"
        printf '%s %s\n' "$voice-$number" "${SENTENCES[number]}" >>texts
    done
done
# Read by people: lines "<s> WORDS </s> (NAME)".
readonly data=/usr/share/pocketsphinx/test/data/librivox
cp "$data"/*.wav original/
sed -nE 's/^<s> (.*) <\/s> \((.*)\)$/\2 \1/p' "$data/transcription" >>texts

# A chord of a minute for the pad.
printf 'X:1\nM:4/4\nL:1/1\nQ:1/4=60\nK:C\n[G,,D,G,B,]16|\n' >chord.abc
abc2midi chord.abc -o chord.mid >/dev/null
"$tarquil" render chord.mid chord.wav --instrument "1=$pad" --quiet

# speak FOLDER OPTION ...
speak() {
    local folder=$1
    shift
    mkdir "$folder"
    for file in original/*.wav; do
        local name
        name=$(basename "$file" .wav)
        "$tarquil" speech decode "$name.tlp" decoded.wav --bits 16 "$@"
        sox decoded.wav -r 16000 -b 16 "$folder/$name.wav"
    done
}

TIMEFORMAT=%U
encoding=$( { time for file in original/*.wav; do
    "$tarquil" speech encode "$file" "$(basename "$file" .wav).tlp"
done; } 2>&1)
speak decoded
speak whispered --whisper
speak pad --carrier chord.wav
cat ./*.tlp | wc -c | awk -v encoding="$encoding" '{
    seconds = $1 / 550
    printf "%.0f s of speech, encoded %.0f times faster than they last\n", seconds, seconds / encoding
}'
# A long file, so that starting the program does not count.
sox original/*.wav -r 16000 long.wav repeat 2
"$tarquil" speech encode long.wav long.tlp
decoding=$( { time "$tarquil" speech decode long.tlp long-decoded.wav; } 2>&1)
soxi -D long.wav | awk -v decoding="$decoding" '{
    printf "decoded %.0f times faster (%.0f s in %s s)\n", $1 / decoding, $1, decoding
}'

# The words of each folder that the recogniser gets right: 1 - (wrong + missing + extra) / words.
recognise() {
    local model=/usr/share/pocketsphinx/model/en-us
    (cd "$1" && ls -- *.wav | sed 's/\.wav$//' >../names)
    pocketsphinx_batch -adcin yes -adchdr 44 -cepdir "$1" -cepext .wav -ctl names \
        -hmm "$model/en-us" -lm "$model/en-us.lm.bin" -dict "$model/cmudict-en-us.dict" \
        -hyp "$1.hyp" >/dev/null 2>"$1.log" || { tail -n 5 "$1.log" >&2; exit 1; }
    awk -v title="$1" '
        function smallest(a, b, c) { return a < b ? (a < c ? a : c) : (b < c ? b : c) }
        NR == FNR { name = $1; $1 = ""; text[name] = $0; next }
        {
            name = $(NF - 1)
            sub(/^\(/, "", name)
            sub(/ *\([^()]*\)$/, "")
            gsub(/(^| )mr( |$)/, " mister ")
            heard = split($0, h)
            said = split(text[name], s)
            for (i = 0; i <= said; i++) d[i, 0] = i
            for (j = 0; j <= heard; j++) d[0, j] = j
            for (i = 1; i <= said; i++)
                for (j = 1; j <= heard; j++)
                    d[i, j] = smallest(d[i - 1, j] + 1, d[i, j - 1] + 1,
                                       d[i - 1, j - 1] + (s[i] != h[j]))
            words += said
            errors += d[said, heard]
        }
        END { printf "%-10s %5.1f %% of %d words\n", title, 100 * (1 - errors / words), words }
    ' texts "$1.hyp"
}
echo "understood by pocketsphinx:"
for folder in original decoded whispered pad; do
    recognise "$folder"
done
echo
"$quality" original/*.wav
