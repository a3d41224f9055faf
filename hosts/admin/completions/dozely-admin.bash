# SPDX-License-Identifier: MIT
# Completion of dozely-admin for bash. What there is to complete, the tool itself knows.
_dozely_admin()
{
    local candidate quote="" words=("${COMP_WORDS[@]:1:COMP_CWORD}") last
    last=$((${#words[@]} - 1))
    case ${words[last]} in
        [\"\']*) quote=${words[last]:0:1} words[last]=${words[last]:1} ;;
        *) words[last]=${words[last]//\\/} ;;
    esac
    local i
    for ((i = 0; i < last; i++)); do # as the shell will hand them over, but without running anything
        case ${words[i]} in
            \"*\" | \'*\') words[i]=${words[i]:1:${#words[i]}-2} ;;
            *) words[i]=${words[i]//\\/} ;;
        esac
    done
    COMPREPLY=()
    while IFS=$'\t' read -r candidate _; do
        if [[ -z $quote ]]; then
            printf -v candidate %q "$candidate"
        fi
        COMPREPLY+=("$candidate")
    done < <("${COMP_WORDS[0]}" complete -- "${words[@]}" 2> /dev/null)
}
complete -o default -F _dozely_admin dozely-admin
