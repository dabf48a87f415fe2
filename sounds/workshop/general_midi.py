"""The 128 programs of General MIDI: names, families, the keys that players use, and how often files use them."""

FAMILIES = (
    "piano chromatic organ guitar bass strings ensemble brass reed pipe lead pad effects ethnic "
    "percussive sound_effects"
).split()

_NAMES = """
acoustic_grand bright_acoustic electric_grand honky_tonk electric_piano_1 electric_piano_2 harpsichord clavi
celesta glockenspiel music_box vibraphone marimba xylophone tubular_bells dulcimer
drawbar_organ percussive_organ rock_organ church_organ reed_organ accordion harmonica tango_accordion
nylon_guitar steel_guitar jazz_guitar clean_guitar muted_guitar overdriven_guitar distortion_guitar guitar_harmonics
acoustic_bass finger_bass pick_bass fretless_bass slap_bass_1 slap_bass_2 synth_bass_1 synth_bass_2
violin viola cello contrabass tremolo_strings pizzicato_strings orchestral_harp timpani
string_ensemble_1 string_ensemble_2 synth_strings_1 synth_strings_2 choir_aahs voice_oohs synth_voice orchestra_hit
trumpet trombone tuba muted_trumpet french_horn brass_section synth_brass_1 synth_brass_2
soprano_sax alto_sax tenor_sax baritone_sax oboe english_horn bassoon clarinet
piccolo flute recorder pan_flute blown_bottle shakuhachi whistle ocarina
square_lead saw_lead calliope_lead chiff_lead charang_lead voice_lead fifths_lead bass_lead
new_age_pad warm_pad polysynth_pad choir_pad bowed_pad metallic_pad halo_pad sweep_pad
rain soundtrack crystal atmosphere brightness goblins echoes sci_fi
sitar banjo shamisen koto kalimba bagpipe fiddle shanai
tinkle_bell agogo steel_drums woodblock taiko melodic_tom synth_drum reverse_cymbal
fret_noise breath_noise seashore bird_tweet telephone helicopter applause gunshot
""".split()

# Lowest and highest key in use; a family's line holds unless a program has its own.
_FAMILY_RANGES = dict(
    piano=(28, 96), chromatic=(55, 96), organ=(36, 91), guitar=(40, 79), bass=(26, 60),
    strings=(40, 88), ensemble=(36, 88), brass=(43, 82), reed=(46, 82), pipe=(60, 93),
    lead=(36, 91), pad=(36, 88), effects=(36, 88), ethnic=(48, 81), percussive=(45, 81),
    sound_effects=(45, 75),
)
_OWN_RANGES = {
    9: (72, 105), 10: (60, 96), 12: (45, 91), 13: (65, 103), 14: (53, 79), 22: (55, 88),
    28: (36, 72), 29: (35, 76), 30: (35, 76), 38: (26, 66), 39: (26, 66),
    40: (55, 98), 41: (48, 88), 42: (36, 76), 43: (28, 60), 44: (36, 88), 45: (36, 88),
    46: (31, 98), 47: (36, 57), 55: (40, 76), 56: (54, 84), 57: (40, 72), 58: (28, 58),
    59: (54, 82), 60: (41, 77), 64: (56, 87), 65: (49, 80), 66: (44, 75), 67: (36, 69),
    68: (58, 91), 69: (52, 81), 70: (34, 69), 71: (50, 91), 72: (74, 105), 73: (60, 96),
    110: (55, 93), 112: (60, 93), 115: (45, 81), 116: (36, 69), 117: (36, 72), 118: (36, 72),
}

# From the busiest: the order in which 279 real files use the programs, then by number.
ORDER_OF_USE = (
    0, 30, 34, 80, 29, 81, 33, 27, 24, 26, 37, 1, 48, 25, 28, 87, 32, 3, 35, 38, 52, 44, 89, 4, 5, 7, 11,
    12, 16, 17, 18, 21, 36, 39, 45, 46, 49, 50, 56, 57, 60, 61, 62, 65, 66, 68, 71, 73,
)

# Programs whose sound has no pitch of its key, or none at all.
UNPITCHED = frozenset((115, 116, 117, 118, 119, 120, 121, 122, 123, 124, 125, 126, 127, 55, 113))


def name_of(program):
    return _NAMES[program]


def family_of(program):
    return FAMILIES[program // 8]


def range_of(program):
    return _OWN_RANGES.get(program, _FAMILY_RANGES[family_of(program)])


def order_of_use():
    return list(ORDER_OF_USE) + [p for p in range(128) if p not in ORDER_OF_USE]


def text_path(program):
    return f"{family_of(program)}/{program:03d}_{name_of(program)}.tqi"
