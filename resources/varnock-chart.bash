# bash completion for varnock-chart                          -*- shell-script -*-
#
# Completes the options, and the values they take: fret layouts, string
# counts, tuning and root notes, chord names (also inside comma-separated
# lists) and file names. Needs nothing from the bash-completion package.

# Adds to COMPREPLY each candidate that starts with what has been typed.
#   _varnock_chart_offer TYPED CANDIDATE...
# Inside an open quote the candidates go as they are (readline closes the
# quote); otherwise their spaces are escaped, the only character in them the
# shell would take apart.
_varnock_chart_offer() {
    local typed=$1 candidate
    shift
    for candidate in "$@"; do
        [[ $candidate == "$typed"* ]] || continue
        if [[ ${_varnock_chart_quoted-} ]]; then
            COMPREPLY+=("$candidate")
        else
            COMPREPLY+=("${candidate// /\\ }")
        fi
    done
}

# Completes the last entry of a comma-separated list.
#   _varnock_chart_offer_list TYPED CANDIDATE...
_varnock_chart_offer_list() {
    local typed=$1 head=
    shift
    if [[ $typed == *,* ]]; then
        head=${typed%,*},
        typed=${typed##*,}
    fi
    local candidate matches=()
    for candidate in "$@"; do
        [[ $candidate == "$typed"* ]] && matches+=("$head$candidate")
    done
    ((${#matches[@]})) && _varnock_chart_offer "$head$typed" "${matches[@]}"
    # The list goes on: no space after an entry.
    compopt -o nospace 2>/dev/null
    return 0
}

_varnock_chart() {
    COMPREPLY=()
    local cword=$COMP_CWORD
    local word=${COMP_WORDS[cword]}
    local cur=${2-$word}
    local option=

    # --name=value: bash splits it at the "=".
    if [[ $word == = ]]; then
        option=${COMP_WORDS[cword - 1]}
        cur=
    elif ((cword >= 2)) && [[ ${COMP_WORDS[cword - 1]} == = ]]; then
        option=${COMP_WORDS[cword - 2]}
    elif ((cword >= 1)); then
        option=${COMP_WORDS[cword - 1]}
    fi

    local _varnock_chart_quoted=
    case $word in
        \"* | \'*)
            _varnock_chart_quoted=1
            cur=${cur#[\"\']}
            ;;
        *) cur=${cur//\\/} ;; # "Diatonic\ w" was typed for "Diatonic w"
    esac

    local notes=(A A# Bb B C C# Db D D# Eb E F F# Gb G G# Ab)
    local chords=(Maj 7 maj7 m m7 Dim Dim7 Sus2 Sus4 add9 madd9 Aug 2 5 6 6/9 9/6 9
        11 13 maj9 maj11 maj13 m6 maj6/9 mmaj7 mmaj9 m9 m11 m13 7/6 7sus4)

    case $option in
        --frets)
            _varnock_chart_offer "$cur" "Diatonic" "Diatonic with 6+" \
                "Diatonic with 1+ and 6+" "Chromatic" 0 1 2 3 4 5
            return 0
            ;;
        --strings)
            _varnock_chart_offer "$cur" 3 4
            return 0
            ;;
        --scale)
            _varnock_chart_offer "$cur" major dorian phrygian lydian mixolydian \
                "natural minor" locrian "harmonic minor" "melodic minor" \
                "major pentatonic" "minor pentatonic" blues 1 2
            return 0
            ;;
        --names)
            _varnock_chart_offer "$cur" english german latin
            return 0
            ;;
        --octaves)
            # One octave 0..8 per string: nothing to offer.
            return 0
            ;;
        --spelling)
            _varnock_chart_offer "$cur" musician sharps flats chord
            return 0
            ;;
        --labels)
            _varnock_chart_offer "$cur" notes degrees both
            return 0
            ;;
        --palette)
            _varnock_chart_offer "$cur" window colour-blind
            return 0
            ;;
        --paper)
            _varnock_chart_offer "$cur" a4 letter
            return 0
            ;;
        --root)
            _varnock_chart_offer "$cur" "${notes[@]}"
            return 0
            ;;
        --chord)
            _varnock_chart_offer "$cur" "${chords[@]}"
            return 0
            ;;
        --tuning | --roots | --identify)
            _varnock_chart_offer_list "$cur" "${notes[@]}"
            return 0
            ;;
        --chords)
            _varnock_chart_offer_list "$cur" "${chords[@]}"
            return 0
            ;;
        --identify-frets | --reach | --count | --highest | --capo)
            # Numbers and fret names: nothing to offer.
            return 0
            ;;
        -o | --output | --png | --window-image | --svg | --pdf | --book | --wav | --midi)
            compopt -o filenames 2>/dev/null
            local IFS=$'\n'
            COMPREPLY=($(compgen -f -- "$cur"))
            return 0
            ;;
    esac

    if [[ $cur == -* || -z $cur ]]; then
        _varnock_chart_offer "$cur" -h --help --version \
            --frets --strings --tuning --root --chord --from-settings \
            --left-handed --flip --spelling --names --scale --labels --palette \
            --text --tsv -o --output --png --window-image --svg --pdf --paper --wav --midi --octaves \
            --book --roots --chords --describe --identify --identify-frets --modes \
            --voicings --reach --highest --muted-ok --count --capo
    fi
    return 0
}

complete -F _varnock_chart varnock-chart
