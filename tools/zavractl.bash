# Completion of zavractl for bash. The program itself knows what may follow; where it says nothing, a file may.
_zavractl()
{
    mapfile -t COMPREPLY < <("${COMP_WORDS[0]}" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
    return 0
}
complete -o default -F _zavractl zavractl
