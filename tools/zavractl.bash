# Completion of zavractl for bash. The program itself knows what may follow.
_zavractl()
{
    local word=${COMP_WORDS[COMP_CWORD]}
    local before=("${COMP_WORDS[@]:1:COMP_CWORD-1}")
    mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" complete "${before[@]}" 2>/dev/null)" -- "$word")
}
complete -o default -F _zavractl zavractl
