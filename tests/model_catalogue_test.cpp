// The catalogue: one reader of note names for every option, exact chord
// names, and degrees that land where the formulas put the notes.

#include "music/catalogue.h"

#include <gtest/gtest.h>

using namespace varnock::catalogue;

TEST(Catalogue, ParseNoteInAnySpelling) {
    const std::vector<std::pair<std::string, std::optional<int>>> rows = {
        {"A", 0},        {"a", 0},       {"Bb", 1},      {"bb", 1},           {"B#", 3},
        {"Cb", 2},       {"Cbb", 1},     {"G##", 0},     {"Gx", 0},           {"Cx#", 6},
        {"Fbbb", 5},     {"E\u266F", 8}, {"D\u266D", 4}, {"F\U0001D12A", 10}, {"E\U0001D12B", 5},
        {"F# / Gb", 9},  {"", {}},       {"H", {}},      {"C#b", {}},         {"Cb#", {}},
        {"#", {}},       {"C#m", {}},    {" C", {}},     {"CB", {}},          {"E\u266Fb", {}},
        {"F# / Ab", {}}, {"F# /", {}},   {"Dm", {}},     {"C#-", {}}};
    for (const auto &[text, want] : rows)
        EXPECT_EQ(ParseNote(text), want) << text;
}

// Each system writes a note one way and reads it back; the rows hold the
// spellings players know (German H, B, As, Es, Heses; Latin Sol, Sib).
TEST(Catalogue, NameSystemsWriteAndReadTheirNames) {
    using N = NameSystem;
    const struct {
        WrittenNote note;
        N system;
        std::string name;
    } rows[] = {
        {{1, 0}, N::German, "H"},     {{1, -1}, N::German, "B"},    {{1, -2}, N::German, "Heses"},
        {{1, 1}, N::German, "His"},   {{0, -1}, N::German, "As"},   {{0, -2}, N::German, "Ases"},
        {{4, -1}, N::German, "Es"},   {{4, -2}, N::German, "Eses"}, {{4, 1}, N::German, "Eis"},
        {{2, -1}, N::German, "Ces"},  {{5, -1}, N::German, "Fes"},  {{5, 2}, N::German, "Fisis"},
        {{0, 1}, N::German, "Ais"},   {{3, 0}, N::German, "D"},     {{6, 0}, N::Latin, "Sol"},
        {{1, -1}, N::Latin, "Sib"},   {{2, 1}, N::Latin, "Do#"},    {{4, -2}, N::Latin, "Mibb"},
        {{0, 0}, N::Latin, "La"},     {{3, 0}, N::Latin, "Re"},     {{5, 1}, N::English, "F#"},
        {{0, 0}, N::English, "A"},    {{1, -1}, N::English, "Bb"},  {{2, 2}, N::English, "C##"},
        {{6, -2}, N::English, "Gbb"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Format(row.note, row.system), row.name);
        EXPECT_EQ(ParseWritten(row.name, row.system), row.note) << row.name;
    }
}

TEST(Catalogue, NameSystemsReadWhatPlayersType) {
    using N = NameSystem;
    const std::vector<std::tuple<std::string, N, std::optional<int>>> rows = {
        {"fis", N::German, 9},    {"F#", N::German, 9},       {"b", N::German, 1},
        {"h", N::German, 2},      {"es", N::German, 6},       {"as", N::German, 11},
        {"Hes", N::German, 1},    {"Bes", N::German, {}},     {"Bis", N::German, {}},
        {"Fises", N::German, {}}, {"X", N::German, {}},       {"sol#", N::Latin, 11},
        {"SI", N::Latin, 2},      {"Ti", N::Latin, {}},       {"D", N::Latin, {}},
        {"Fa♯", N::Latin, 9},     {"So", N::Latin, {}},       {"H", N::English, {}},
        {"Do", N::English, {}},   {"Re / Mibb", N::Latin, 5},
    };
    for (const auto &[text, system, want] : rows)
        EXPECT_EQ(ParseNote(text, system), want) << text;
    EXPECT_EQ(FindNameSystem("German"), N::German);
    EXPECT_EQ(FindNameSystem("solfege"), std::nullopt);
    EXPECT_EQ(Translate("Bb", N::English, N::German), "B");
    EXPECT_EQ(Translate("B", N::English, N::German), "H");
    EXPECT_EQ(Translate("Notes", N::English, N::German), "Notes");
}

TEST(Catalogue, ChordNamesMatchExactly) {
    const std::vector<std::pair<std::string, std::optional<int>>> rows = {
        {"Maj", 0}, {"m", 3},     {"maj7", 2},  {"Dim7", 6},   {"7sus4", 31}, {"M", {}},
        {"M7", {}}, {"Maj7", {}}, {"dim7", {}}, {"maj7 ", {}}, {"", {}}};
    for (const auto &[name, want] : rows)
        EXPECT_EQ(FindChordType(name), want) << name;
}

TEST(Catalogue, DegreesAndFormulasReadAsAMusicianWritesThem) {
    struct Row {
        std::string_view text;
        int number, semitones;
    };
    for (const Row &row :
         {Row{"R", 1, 0}, Row{"b3", 3, 3}, Row{"#5", 5, 8}, Row{"bb7", 7, 9}, Row{"9", 9, 2},
          Row{"11", 11, 5}, Row{"13", 13, 9}, Row{"x", 0, 0}, Row{"b", 0, 0}, Row{"15", 0, 0}}) {
        const Degree degree = ParseDegree(row.text);
        EXPECT_EQ(degree.number, row.number) << row.text;
        // Semitones count only for a degree that was read.
        EXPECT_EQ(row.number ? degree.semitones : 0, row.semitones) << row.text;
    }
    struct Formula {
        std::string_view text;
        int count;
        std::array<int, 4> semitones;
    };
    for (const Formula &row :
         {Formula{"4,3", 3, {0, 4, 7, 0}}, Formula{"3,7,11", 4, {0, 3, 10, 9}},
          Formula{"7", 2, {0, 7, 0, 0}}, Formula{"4,,3", 0, {}}, Formula{"4,3,3,2", 0, {}},
          Formula{"-4,3", 0, {}}, Formula{"", 0, {}}}) {
        const Offsets offsets = FormulaOffsets(row.text);
        EXPECT_EQ(offsets.count, row.count) << row.text;
        if (row.count) {
            EXPECT_EQ(offsets.semitones, row.semitones) << row.text;
        }
    }
}
