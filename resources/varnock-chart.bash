# bash completion for varnock-chart                          -*- shell-script -*-
#
# Completes the options, and the values they take, also inside
# comma-separated lists, and file names. The words come from the command
# itself (--completion-words), so they are always its own. Needs nothing
# from the bash-completion package.

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
    local command=${1:-varnock-chart}
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

    # Note names are offered in the system --names chose, if it did.
    local names= i
    for ((i = 1; i < cword - 1; i++)); do
        [[ ${COMP_WORDS[i]} == --names ]] || continue
        names=${COMP_WORDS[i + 1]}
        [[ $names == = ]] && names=${COMP_WORDS[i + 2]}
    done

    # What the option before takes: its kind on the first line, then its
    # words. Not an option (a value or the command): an option comes next.
    local IFS=$'\n' answer=()
    if [[ $option == -* ]]; then
        answer=($("$command" --completion-words "$option" $names 2>/dev/null))
    fi
    case ${answer[0]-} in
        word)
            _varnock_chart_offer "$cur" "${answer[@]:1}"
            return 0
            ;;
        list)
            _varnock_chart_offer_list "$cur" "${answer[@]:1}"
            return 0
            ;;
        file)
            compopt -o filenames 2>/dev/null
            COMPREPLY=($(compgen -f -- "$cur"))
            return 0
            ;;
    esac

    if [[ $cur == -* || -z $cur ]]; then
        _varnock_chart_offer "$cur" $("$command" --completion-words 2>/dev/null)
    fi
    return 0
}

complete -F _varnock_chart varnock-chart
