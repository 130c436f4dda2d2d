#!/usr/bin/env bats
# The alert, the views of the diagnosis and the helpers for widgets, in windows that are really used.

source "$BATS_TEST_DIRNAME/desktop.bash"

setup_file()
{
    need openbox
    desktop_start
    start MANAGER openbox
    until_true manager_is_there
}

setup()
{
    rm -f "$DESKTOP/HOST.log"
}

teardown()
{
    [[ -z ${HOST:-} ]] || end "$HOST"
}

teardown_file()
{
    desktop_stop
}

manager_is_there()
{
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}

has_focus()
{
    [[ $(xdotool getwindowfocus) == "$window" ]]
}

find_window()
{
    window=$(xdotool search --onlyvisible --pid "$HOST" 2>/dev/null | tail -n 1)
    [[ -n $window ]]
}

# show KIND: starts the program and waits for its window, which is then in $window.
show()
{
    start HOST "$VELQ_BUILD/TestViews.app/Contents/MacOS/test_views" "$1"
    until_true find_window
    until_true has_focus
}

# click_at X Y: in the window's own coordinates.
click_at()
{
    xdotool mousemove --window "$window" "$1" "$2" click 1
}

# click_button TITLE: where the program told that it is.
click_button()
{
    local place
    until_true grep -q "^$1 at " "$DESKTOP/HOST.log"
    place=$(sed -n "s/^$1 at //p" "$DESKTOP/HOST.log")
    # shellcheck disable=SC2086
    click_at $place
}

told()
{
    [[ $(grep -v ' at ' "$DESKTOP/HOST.log") == "$1" ]]
}

# until_told LINE...: exactly this has been told.
until_told()
{
    until_true told "$(printf '%s\n' "$@")" || { cat "$DESKTOP/HOST.log"; return 1; }
}

host_ended()
{
    wait "$HOST"
}

# colour_at X Y: of the window's pixel, as rrggbb.
colour_at()
{
    import -silent -window "$window" "$DESKTOP/window.png"
    convert "$DESKTOP/window.png" -depth 8 -format "%[hex:p{$1,$2}]" info: | cut -c 1-6 | tr A-F a-f
}

# colour_is X Y PATTERN
colour_is()
{
    # shellcheck disable=SC2053 # it may be a pattern
    [[ $(colour_at "$1" "$2") == $3 ]]
}

@test "a button of the alert is clicked" {
    show alert
    click_button Feedback
    host_ended
    until_told 1001
}

@test "the first button of the alert is clicked" {
    show alert
    click_button OK
    host_ended
    until_told 1000
}

@test "Return, Escape and the manager's close answer like the first button" {
    for key in Return Escape alt+F4; do
        rm -f "$DESKTOP/HOST.log"
        show alert
        xdotool key "$key"
        host_ended
        until_told 1000
    done
}

@test "Tab and the space bar reach the second button" {
    show alert
    xdotool key Tab space
    host_ended
    until_told 1001
}

@test "the boxes of the proxies are clicked" {
    show views
    click_at 10 105
    until_told '2 off'
    click_at 10 45
    until_told '2 off' '0 off'
    click_at 10 45
    until_told '2 off' '0 off' '0 on'
    xdotool key alt+F4
    host_ended
    until_told '2 off' '0 off' '0 on' '0 views left'
}

@test "the views are as large as they say, one below the other" {
    show views
    eval "$(xdotool getwindowgeometry --shell "$window")"
    # shellcheck disable=SC2153 # xdotool's
    [[ "$WIDTH $HEIGHT" == '492 120' ]]
    until_true colour_is 6 15 e08a1e
}

@test "the shortcuts edit the text of a field" {
    show fields
    xdotool type old
    until_told 'text o' 'text ol' 'text old'
    xdotool key ctrl+a ctrl+c Delete ctrl+v ctrl+v
    xdotool key ctrl+a ctrl+x ctrl+v
    xdotool key x
    until_true grep -qx 'text oldoldx' "$DESKTOP/HOST.log"
}

@test "the shortcuts reach what has the focus beside a field" {
    show fields
    xdotool key Tab
    until_told focus
    xdotool key ctrl+x ctrl+c ctrl+v ctrl+a ctrl+z
    until_told focus cut copy paste selectAll 'key Ctrl+Z'
}

@test "other combinations are left alone" {
    show fields
    xdotool key Tab
    until_told focus
    xdotool key ctrl+shift+v alt+c
    until_true grep -qx 'key Alt+C' "$DESKTOP/HOST.log"
    grep -qx 'key Ctrl+Shift+V' "$DESKTOP/HOST.log"
    not grep -qxE 'paste|copy' "$DESKTOP/HOST.log"
}

@test "a window is filled below its children, a child has its gradient" {
    show fills
    until_true colour_is 50 100 ff0000
    until_true colour_is 99 199 ff0000
    until_true colour_is 100 0 '0?0?0?'
    until_true colour_is 299 199 'f?f?f?'
    [[ $(colour_at 200 50) == "$(colour_at 299 50)" ]]
    click_button Blue
    until_true colour_is 50 100 0000ff
    until_true colour_is 299 199 'f?f?f?'
}
