#!/usr/bin/env bash
# Collects the free MIDI files of Debian's packages in a folder, each different one once.
#
# Usage: fetch.sh FOLDER
#
# The packages are downloaded and unpacked below FOLDER, not installed; the songs come to
# FOLDER/midi as PACKAGE-NAME.mid.  What is there already is left alone.
set -euo pipefail
readonly FOLDER=$1
readonly PACKAGES=(simutrans-data openttd-openmsx freedoom freedm mma planetblupi-music-midi
    pianobooster playmidi timidity abcmidi)

mkdir -p "$FOLDER/packages" "$FOLDER/midi"
readonly HERE=$(cd "$(dirname "$0")" && pwd)
cd "$FOLDER"
declare -A seen=()

# keep PACKAGE NAME: a song on standard input.
keep() {
    local target sum
    target=midi/$1-$(printf '%s' "$2" | tr -c 'A-Za-z0-9._-' '_').mid
    cat >"$target"
    sum=$(sha256sum <"$target")
    if [ -n "${seen[$sum]:-}" ] || [ "$(head -c 4 "$target")" != MThd ]; then
        rm "$target"
    else
        seen[$sum]=1
    fi
}

for package in "${PACKAGES[@]}"; do
    if [ ! -d "packages/$package" ]; then
        (cd packages && apt-get download "$package" >/dev/null)
        dpkg -x packages/"$package"_*.deb "packages/$package"
        rm packages/"$package"_*.deb
    fi
    while IFS= read -r -d '' file; do
        name=$(basename "$file")
        case $file in
        *.mid | *.midi | *.MID | *.kar) keep "$package" "${name%.*}" <"$file" ;;
        *.mid.gz | *.MID.gz | *.midi.gz)
            name=${name%.gz}
            gzip -dc "$file" | keep "$package" "${name%.*}"
            ;;
        *.abc)
            tune=$(mktemp)
            if abc2midi "$file" 1 -o "$tune" >/dev/null 2>&1; then
                keep "$package" "${name%.*}" <"$tune"
            fi
            rm -f "$tune"
            ;;
        *.wad)
            lumps=$(mktemp -d)
            perl "$HERE/wad_songs.pl" "$file" "$lumps"
            for lump in "$lumps"/*; do
                keep "$package" "${name%.*}-$(basename "$lump")" <"$lump"
            done
            rm -r "$lumps"
            ;;
        esac
    done < <(find "packages/$package" -type f -print0 | sort -z)
done
