# shellcheck shell=bash
# The monitor on a terminal of its own, and somebody who types.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/monitor.bash"

# In setup, before the terminal is started.
make_keyboard()
{
    input=$here/keyboard
    mkfifo "$input"
    exec {keyboard}<>"$input"
}

# start_terminal COMMAND: a shell's, on a terminal of its own; MONITOR stands for the monitor's command line.
start_terminal()
{
    local monitor
    printf -v monitor '%q ' "${surroundings[@]}" "$program" --console
    # Its shell must not stay between: what it starts is to have the terminal.
    start terminal "${inside[@]}" "${tied[@]}" SHELL=/bin/bash \
        script --quiet --return --flush --echo never --command "${1//MONITOR/$monitor}" /dev/null
}

type_text()
{
    printf '%b' "$1" >&"$keyboard"
}
