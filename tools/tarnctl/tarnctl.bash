# SPDX-License-Identifier: Apache-2.0
# Completion for bash. The program itself knows what may follow; it contacts no server for that.
_tarnctl() {
    # Words as they stand on the line: bash would part them at "=" and ":".
    local line=${COMP_LINE:0:COMP_POINT} words word
    read -ra words <<<"$line"
    [[ $line == *[[:space:]] ]] && words+=("")
    local last=${words[-1]}
    COMPREPLY=()
    while IFS= read -r word; do
        # Only what stands behind the last parting character is replaced.
        COMPREPLY+=("${word#"${last%"${last##*[=:]}"}"}")
    done < <("${words[0]}" complete -- "${words[@]:1}" 2>/dev/null)
    if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
}
complete -F _tarnctl tarnctl
