# Sourced by long-running scripts: step NAME begins a step, and at the end of the script the seconds of each
# step are listed.
steps=()

step() {
    [ ${#steps[@]} -eq 0 ] || steps[-1]+=" $SECONDS"
    steps+=("$1|$SECONDS")
    printf '\n=== %s (%s s so far)\n' "$1" "$SECONDS"
}

print_steps() {
    local status=$? entry name times
    [ ${#steps[@]} -gt 0 ] || return $status
    steps[-1]+=" $SECONDS"
    printf '\nseconds\n'
    for entry in "${steps[@]}"; do
        name=${entry%|*}
        read -ra times <<<"${entry##*|}"
        printf '%7d  %s\n' $((times[1] - times[0])) "$name"
    done
    printf '%7d  all\n' "$SECONDS"
    return $status
}
trap print_steps EXIT
