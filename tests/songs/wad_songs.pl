# Writes the MIDI files within a WAD archive into a folder: wad_songs.pl FILE.wad FOLDER
#
# A WAD has a head (4 letters, the number of lumps, the directory's offset) and a directory of
# (offset, size, name of 8 bytes), all numbers little-endian.
use strict;
use warnings;

my ($path, $folder) = @ARGV;
open my $wad, '<:raw', $path or die "$path: $!\n";
local $/;
my $bytes = <$wad>;
my (undef, $count, $directory) = unpack 'a4 V V', $bytes;
for my $i (0 .. $count - 1) {
    my ($offset, $size, $name) = unpack 'V V Z8', substr $bytes, $directory + 16 * $i, 16;
    my $lump = substr $bytes, $offset, $size;
    next unless $lump =~ /^MThd/;
    open my $out, '>:raw', "$folder/$name" or die "$folder/$name: $!\n";
    print $out $lump;
}
