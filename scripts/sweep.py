#!/usr/bin/env python3
"""Runs the same varnock-chart command lines with two binaries and reports
every difference in exit status, standard output, standard error and the
files written (PDFs as pdftotext and pdftoppm read them). A tool to run by hand when a
change must leave outputs as they were:
    scripts/sweep.py OLD_BINARY NEW_BINARY [--list]
"""
import itertools
import os
import re
import subprocess
import sys
import tempfile

FILES = {"--png": "out.png", "--svg": "out.svg", "--pdf": "out.pdf", "--book": "book.pdf",
         "--wav": "out.wav", "--midi": "out.mid", "--window-image": "win.png", "-o": "out.txt",
         "--chordpro": "out.cho"}


def cases():
    # README examples.
    yield from [
        ["--root", "D"], ["--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "D", "--chord", "7", "--tsv"],
        ["--root", "F#", "--chord", "m7", "--png"], ["--tuning", "D,A,D", "--book"],
        ["--root", "D", "--left-handed", "--flip", "--png"], ["--root", "D", "--window-image"],
        ["--root", "Eb", "--chord", "7", "--pdf", "--paper", "letter"],
        ["--root", "C", "--chord", "m7", "--labels", "degrees"],
        ["--root", "D", "--chord", "7", "--palette", "colour-blind", "--png"],
        ["--identify", "C,E,G,Bb"], ["--root", "Eb", "--spelling", "sharps"], ["--root", "D", "--describe"],
        ["--identify", "D,F#,A"], ["--frets", "Chromatic", "--identify-frets", "0,2,4"],
        ["--root", "D", "--voicings"], ["--root", "D", "--chord", "7", "--voicings", "--reach", "4", "--count", "3"],
        ["--frets", "Diatonic with 6+", "--root", "A", "--voicings", "--highest", "6+"],
        ["--root", "D", "--chord", "5", "--voicings", "--muted-ok"],
        ["--frets", "1", "--root", "A", "--chord", "7", "--voicings", "--png", "--left-handed"],
        ["--tuning", "D,A,D", "--book", "--voicings", "--chords", "Maj,m,7"],
        ["--root", "E", "--chord", "m", "--capo", "6+", "--frets", "1", "--voicings"],
        ["--root", "D", "--capo", "3", "--png"], ["--frets", "1", "--capo", "3", "--identify-frets", "6+,0,x"],
        ["--scale", "minor pentatonic", "--root", "A"], ["--modes", "--frets", "Diatonic with 1+ and 6+"],
        ["--root", "D", "--wav", "--midi"], ["--names", "latin", "--root", "Sib", "--chord", "7"],
        ["--names", "german", "--root", "Fis", "--chord", "m"],
        ["--scale", "dorian", "--root", "D", "--png"],
    ]
    # A spread of combinations.
    layouts = ["0", "1", "2", "3", "4", "5"]
    tunings = ["D,A,D", "D,A,D,G", "Bb,F,Bb", "C,G,C"]
    roots = ["D", "Bb", "F#", "A"]
    chords = ["Maj", "m", "7", "Dim7", "5", "maj9"]
    outputs = [[], ["--tsv"], ["--describe"], ["--voicings"], ["--labels", "both"], ["--spelling", "flats"],
               ["--names", "german"], ["--svg"], ["--pdf"], ["--midi"]]
    for i, (layout, tuning, root, chord) in enumerate(itertools.product(layouts, tunings, roots, chords)):
        out = outputs[i % len(outputs)]
        extra = ["--capo", "2"] if i % 7 == 3 else []
        extra += ["--left-handed"] if i % 5 == 1 else []
        yield ["--frets", layout, "--tuning", tuning, "--root", root, "--chord", chord] + extra + out
    # Bad input: each refusal, and which of two comes first.
    yield from [
        ["--root", "H"], ["--names", "german", "--root", "Hx"], ["--root", "Dm"], ["--capo", "99"],
        ["--root", "D", "--voicings", "--capo", "3", "--highest", "2"], ["--identify", "D"],
        ["--identify", "D,D"], ["--names", "latin", "--tuning", "Re,La,Re", "--modes"],
        ["--names", "latin", "--tuning", "Re,La,Rx"], ["--png=/nonexistent/x.png", "--capo", "zz"],
        ["--octaves", "3,3", "--wav"], ["--frets", "3", "--identify-frets", "0,2,99"],
        ["--tuning", "D,A,D", "--book", "--roots", "D,D"], ["--book", "--chords", "Dm"],
        ["--names", "german", "--book", "--roots", "H,Fis", "--chords", "m"],
    ]
    # Songs.
    songs = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "songs")
    for song in sorted(os.listdir(songs)):
        path = os.path.join(songs, song)
        yield ["--song", path]
        yield ["--song", path, "--frets", "1", "--capo", "2", "--pdf", "--chordpro"]
        yield ["--song", path, "--suggest", "--tunings", "D,A,A;D,G,D"]
        yield ["--song", path, "--key", "G", "--names", "german", "--left-handed"]
        yield ["--song", path, "--transpose", "-2", "--highest", "9", "--muted-ok"]
    for layout, tuning in itertools.product(layouts, tunings):
        yield ["--frets", layout, "--tuning", tuning, "--modes"]
        yield ["--frets", layout, "--tuning", tuning, "--scale", "mixolydian", "--root", "G", "--tsv"]


def run(binary, args, folder):
    argv = [binary]
    for a in args:
        argv.append(a)
        if a in FILES:
            argv.append(os.path.join(folder, FILES[a]))
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_DATA_HOME=folder, XDG_CONFIG_HOME=folder)
    p = subprocess.run(argv, capture_output=True, env=env, timeout=120)
    files = {}
    for name in sorted(os.listdir(folder)):
        path = os.path.join(folder, name)
        if os.path.isfile(path):
            data = open(path, "rb").read()
            if name.endswith(".pdf"):
                # Qt's PDFs differ from run to run (font subset names,
                # document ID): compare what a reader sees, text and pages.
                text = subprocess.run(["pdftotext", "-layout", path, "-"], capture_output=True).stdout
                pages = subprocess.run(["pdftoppm", "-r", "40", "-png", path], capture_output=True).stdout
                data = text + pages
            files[name] = data
            os.remove(path)
    return p.returncode, p.stdout, p.stderr, files


def main():
    old, new = sys.argv[1], sys.argv[2]
    differ = 0
    total = 0
    with tempfile.TemporaryDirectory() as a, tempfile.TemporaryDirectory() as b:
        for args in cases():
            total += 1
            ra, rb = run(old, args, a), run(new, args, b)
            if ra == rb:
                continue
            differ += 1
            what = [k for k, x, y in zip(["status", "stdout", "stderr", "files"], ra, rb) if x != y]
            print("DIFF", " ".join(args), ":", ", ".join(what))
            if "stdout" in what or "stderr" in what:
                for label, x, y in (("out", ra[1], rb[1]), ("err", ra[2], rb[2])):
                    if x != y:
                        print("  old", label, repr(x[:300].decode(errors="replace")))
                        print("  new", label, repr(y[:300].decode(errors="replace")))
    print(f"{differ} of {total} runs differ")


if __name__ == "__main__":
    main()
