#include "sample_music.h"

#include "tools/sound_file/sound_file.h"

namespace bridge::playground {

namespace {

// Notes of the scale of A, in Hz.
constexpr double a = 220, b = 247, c = 262, d = 294, e = 330, f = 349, g = 392, a2 = 440, rest = 0;

struct Sample {
    const char* path;
    const char *title, *artist, *album;
    std::vector<double> tones;
};

const Sample samples[] = {
    {"Garden Suite/01.flac",
     "Morning Harvest",
     "The Allotment Band",
     "Garden Suite",
     {c, e, g, e, c, rest, d, f, a2, f, d, c}},
    {"Garden Suite/02.flac", "The Wheelbarrow", "The Allotment Band", "Garden Suite", {a, a, b, c, d, c, b, a}},
    {"Garden Suite/03.flac",
     "Café \"Zum grünen Zaun\"",
     "Josefine Lindqvist",
     "Garden Suite",
     {g, f, e, d, e, f, g, g}},
    {"À côté/Été.flac", "L’été à côté", "Françoise Lefèvre", "À côté", {e, d, c, d, e, e, e, rest, d, d}},
    {"世界/1.flac", "朝の海", "山田 花子", "世界", {a, c, d, e, g, e, d, c}},
    {"世界/2.flac", "Тихая река", "Анна Петрова", "世界", {e, e, d, c, b, a}},
    {"世界/3.flac", "نسيم الصباح", "عمر الحسن", "世界", {d, e, f, e, d, c, d}},
    {"世界/4.flac", "שיר ערש", "ליאת כהן", "世界", {c, b, a, b, c}},
    {"Recording in the kitchen.flac", "", "", "", {a2, rest, a2, rest, a2}},
};

} // namespace

void makeSampleMusic(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const auto& sample : samples) {
        SoundFile sound{{}, sample.tones};
        if (*sample.title) sound.tags = {{"TITLE", sample.title}, {"ARTIST", sample.artist}, {"ALBUM", sample.album}};
        std::filesystem::create_directories((folder / sample.path).parent_path());
        writeSoundFile(folder / sample.path, sound);
    }
}

} // namespace bridge::playground
