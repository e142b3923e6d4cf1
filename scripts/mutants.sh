#!/usr/bin/env bash
# Plants single-line faults in the product code one at a time, rebuilds, runs
# the test suite and counts how many faults it caught. A tool to run by hand
# (it takes a while), not part of the test command.
#   scripts/mutants.sh [BUILD_DIR]      (default: build-mutants)
# Each fault is FILE@@TEXT@@NEW: TEXT must occur exactly once in FILE and
# becomes NEW. The file is restored after each run, and on interruption.
set -uo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-mutants}
export QT_QPA_PLATFORM=offscreen

faults=(
  # The chord model.
  'model/chordmodel.cpp@@M.nBassIndex = Add(M.Fret_Indices(p), M.nOpenBassString) % 12;@@M.nBassIndex = Add(M.Fret_Indices(p), M.nOpenBassString) % 11;'
  'model/chordmodel.cpp@@M.nOpenMiddleString = Add(MiddleSelectMenu, 36) % 12;@@M.nOpenMiddleString = Add(MiddleSelectMenu, 35) % 12;'
  'model/chordmodel.cpp@@            TableOne(2, p) = note + ",";@@            TableOne(3, p) = note + ",";'
  # The catalogue (a fault that breaks its compile-time checks does not build).
  'music/catalogue.h@@    {"x", 2},          // double sharp as typed@@    {"x", 1},'
  'music/catalogue.h@@    if (up != 0 && down != 0)@@    if (up != 0 && down != 0 && false)'
  'music/catalogue.h@@            if (!digits || out.count == kMaxChordNotes)@@            if (out.count == kMaxChordNotes)'
  'music/catalogue.cpp@@        if (kChordTypes[i].name == name)@@        if (kChordTypes[i].name.starts_with(name))'
  'model/chordmodel.cpp@@        formulas.emplace_back(type.formula);@@        formulas.emplace_back(type.name);'
  'music/layouts.h@@    {"", {2, 4, 5, 8, 9}, 5, Naming::Numbers, LabelRow::None},@@    {"", {0, 4, 5, 8, 9}, 5, Naming::Numbers, LabelRow::None},'
  'music/layouts.h@@           12 * (position / layout.length);@@           12 * (position / 7);'
  'model/chordmodel.cpp@@notes += "," + Note4;@@notes += Note4;'
  'model/chordmodel.cpp@@else if (slot == 4)@@else if (slot == 5)'
  'model/chordmodel.cpp@@    if (major >= 0) {@@    if (major > 0) {'
  'model/chordmodel.cpp@@        for (Int col = 0; col <= kLastPosition; ++col)@@        for (Int col = 1; col <= kLastPosition; ++col)'
  # The settings store and the saved selections.
  'settings/iniclass.cpp@@Int found = InStr(text, "[" + sectionName + "]" + CR);@@Int found = InStr(text, "[" + sectionName + "]");'
  'settings/iniclass.cpp@@        value = Right(line, Len(line) - InStr(line, "="));@@        value = Right(line, Len(line) - InStr(line, "=") - 1);'
  'settings/iniclass.cpp@@        found = InStr(text, CR + "[");@@        found = InStr(text, "[");'
  'settings/iniclass.cpp@@            rewritten = head + text + key + "=" + value + CR + tail;@@            rewritten = head + text + key + "=" + value + tail;'
  'settings/iniclass.cpp@@MsgBox("Error reading preference: " + sectionName + " - " + keyName);@@MsgBox("Error reading preference: " + sectionName + " - " + sectionName);'
  'settings/iniclass.cpp@@            text = Right(text, Len(text) - InStr(text, CR));@@            text = Right(text, Len(text) - InStr(text, CR) + 1);'
  'settings/selections.cpp@@{"Strings", "Two"},@@{"Strings", "Tow"},'
  'settings/selections.cpp@@        if (found > 0)@@        if (found > 1)'
  'settings/selections.cpp@@Str(popups[i]->ListIndex())@@Str(popups[i]->ListIndex() + 1)'
  'settings/location.cpp@@        if (newPlace->Exists())@@        if (!newPlace->Exists())'
  # The controller.
  'chart/controller.cpp@@    Model.BassSelectMenu = p.ListIndex() - 31;@@    Model.BassSelectMenu = p.ListIndex() - 30;'
  'chart/controller.cpp@@    PopupMenu8->SetVisible(p.ListIndex() != 0);@@    PopupMenu8->SetVisible(p.ListIndex() == 0);'
  'chart/controller.cpp@@    for (Int r = 1; r <= strings; ++r) {@@    for (Int r = 1; r < strings; ++r) {'
  'chart/controller.cpp@@    Listbox1->AddRow("0");@@    Listbox1->AddRow("");'
  'chart/controller.cpp@@    if (mode == 0 || mode == 3 || mode == 4 || mode == 5) {@@    if (mode == 0 || mode == 4 || mode == 5) {'
  'chart/controller.cpp@@    return PopupMenu10->ListIndex() == 1 ? 4 : 3;@@    return PopupMenu10->ListIndex() == 0 ? 4 : 3;'
  'chart/controller.cpp@@    Model.M.Startup(PopupMenu9->ListIndex());@@    Model.M.Startup(PopupMenu10->ListIndex());'
  'chart/controller.cpp@@            Listbox2->SetCell(Listbox2->LastIndex(), i, fields[static_cast<std::size_t>(i)]);@@            Listbox2->SetCell(Listbox2->LastIndex(), i + 1, fields[static_cast<std::size_t>(i)]);'
  'chart/sheet.cpp@@        PaintTile(g, InPalette(ChartFillRule(row, column, l.ListCount()), palette));@@        PaintTile(g, InPalette(ChartFillRule(row, column + 1, l.ListCount()), palette));'
  'chart/sheet.cpp@@        look.reverseRowsFrom = 1;@@        look.reverseRowsFrom = 2;'
  'platform/popupmenu.cpp@@    if (Change)@@    if (Change && false)'
  'platform/listboxpaint.cpp@@    gradient.setColorAt(0.92, bottom);@@    gradient.setColorAt(0.9, bottom);'
  # The cell painting.
  'chart/cellpaint.cpp@@    if (row == 2 || row == 4)@@    if (row == 1 || row == 3)'
  'chart/cellpaint.cpp@@    if (column == 0)@@    if (column == 1)'
  'chart/cellpaint.cpp@@        const double sum = ((h - yy) / h) * t + (yy / h) * b;@@        const double sum = ((h - yy) / h) * b + (yy / h) * t;'
  'chart/cellpaint.cpp@@    g.ForeColor(colors::kFrameLight);@@    g.ForeColor(colors::kFrameDark);'
  'chart/cellpaint.cpp@@    if (text == note3)@@    if (text == note4)'
  'chart/cellpaint.cpp@@    if (column >= 0 && column <= 3)@@    if (column >= 0 && column < 3)'
  'chart/cellpaint.h@@{0x00AA00, 0x0000BB, 0xBB00BB, 0xAA0000}@@{0x00AA00, 0xBB00BB, 0x0000BB, 0xAA0000}'  # varnock-chart.
  'cli/options.cpp@@        if (o.Given(entry->name))@@        if (false)'
  'cli/options.cpp@@        if (entry->kind != ValueKind::None && value->starts_with("-") && !down)@@        if (entry->kind == ValueKind::File && value->starts_with("--") && !down)'
  'cli/names.cpp@@        if (s.strings && *s.strings + 3 != strings)@@        if (s.strings && *s.strings + 3 < strings)'
  'cli/names.cpp@@(match.taken->word == typed || match.taken->value == meant)@@(match.taken->word == typed)'
  'cli/options.cpp@@entry->usedBy && !(entry->usedBy & used))@@entry->usedBy && !(entry->usedBy | used))'
  'export/spelling.cpp@@            out.stringNames[s] = Plain(tuning[s]);@@            out.stringNames[s] = catalogue::SharpName(open);'
  'music/describe.cpp@@facts.lastStringFirst ? strings - 1 - k : k;@@k;'
  'music/degrees.cpp@@            Above(*root, cat::ParseDegree(type.degrees[i]).number, offsets.semitones[i])));@@            Above(*root, cat::ParseDegree(type.degrees[i]).number, offsets.semitones[i] + 1)));'
  'music/identify.cpp@@            else if ((mask & wanted) == wanted)@@            else if ((mask & wanted) != 0)'
  'export/chartdoc.cpp@@        std::reverse(rows.begin() + 2, rows.end());@@        std::reverse(rows.begin() + 1, rows.end());'
  'export/render.cpp@@    if (asked.describe && capo > 0)@@    if (asked.describe && capo > 1)'
  'export/render.cpp@@    instrument.capo = capo;@@    instrument.capo = 0;'
  'export/notenames.cpp@@    asked.tuning = ListToEnglish(asked.tuning, asked.names, "tuning note");@@'
  'export/song.cpp@@    else if (song.transpose && *song.transpose % 12 != 0)@@    else if (false)'
  'cli/options.cpp@@o.voicings ? file.fingerings : file.chart@@file.chart'
  'export/render.cpp@@WritePng(*asked.png, page, asked.pixelScale, orientation, asked.palette)@@WritePng(*asked.png, page, 1, orientation, asked.palette)'
  'export/render.cpp@@WriteSvg(*asked.svg, page, orientation, asked.palette)@@WriteSvg(*asked.svg, page, orientation, Palette::Window)'
  'export/render.cpp@@ModesText(Spell(board, Spelling::Musician, "", tuning), root, names)@@ModesText(Spell(board, Spelling::Musician, "", {}), root, names)'
  'export/song.cpp@@    board.leftHanded = asked.leftHanded;@@    board.leftHanded = false;'
  # The write path and the files' validity.
  'export/outfile.cpp@@        t.exists = t.inPlace = true;@@        t.exists = true;'
  'export/outfile.cpp@@        if (!S_ISLNK(t.status.st_mode))@@        if (true)'
  'export/outfile.cpp@@        if (other->id == s->id)@@        if (other->name == s->name)'
  'export/outfile.cpp@@        const bool ok = fchmod(fd, s->target.exists ? old.st_mode & 07777 : NewFileMode()) == 0;@@        const bool ok = fchmod(fd, NewFileMode()) == 0;'
  'export/outfile.cpp@@    PrintOut(text);@@    PrintOut(text.substr(0, 1));'
  'platform/graphics.cpp@@    const int copy = Counts(cairo_get_target(cairo))[key]++;@@    const int copy = Counts(cairo_get_target(cairo))[key]++ * 0;'
)

# Replaces the one occurrence of $2 in file $1 by $3; fails unless there is exactly one.
plant() {
    python3 - "$1" "$2" "$3" <<'PY'
import sys
path, old, new = sys.argv[1:]
text = open(path).read()
if text.count(old) != 1:
    sys.exit("%s: %d matches for %r" % (path, text.count(old), old))
open(path, 'w').write(text.replace(old, new))
PY
}

backup=$(mktemp -d)
restore() { [ -n "${current:-}" ] && cp "$backup/file" "$current"; current=; }
trap 'restore; rm -rf "$backup"; exit 130' INT TERM

cmake -S . -B "$build" -DVARNOCK_BENCH=OFF -DVARNOCK_WERROR=OFF >/dev/null || exit 1
cmake --build "$build" -j"$(nproc)" >/dev/null || { echo "the unchanged tree does not build"; exit 1; }
ctest --test-dir "$build" -j"$(nproc)" >/dev/null 2>&1 || { echo "the unchanged tree fails its tests"; exit 1; }

caught=0 survived=0 broken=0
for fault in "${faults[@]}"; do
    file=${fault%%@@*} rest=${fault#*@@}
    old=${rest%%@@*} new=${rest#*@@}
    current=$file
    cp "$file" "$backup/file"
    if ! plant "$file" "$old" "$new"; then
        echo "BROKEN   $file: the text to change is not there once"
        broken=$((broken + 1)); restore; continue
    fi
    if ! cmake --build "$build" -j"$(nproc)" >/dev/null 2>&1; then
        echo "BROKEN   $file: does not build with: $new"
        broken=$((broken + 1))
    elif ctest --test-dir "$build" -j"$(nproc)" --stop-on-failure --timeout 120 >/dev/null 2>&1; then
        echo "SURVIVED $file: $new"
        survived=$((survived + 1))
    else
        echo "caught   $file: $new"
        caught=$((caught + 1))
    fi
    restore
done
rm -rf "$backup"
cmake --build "$build" -j"$(nproc)" >/dev/null 2>&1
echo "mutants: $caught caught, $survived survived, $broken broken, of ${#faults[@]}"
