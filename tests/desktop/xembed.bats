#!/usr/bin/env bats
# The monitor in a tray that takes X windows.

source "$BATS_TEST_DIRNAME/desktop.bash"

setup_file()
{
    need trayer
    desktop_start
}

setup()
{
    plug_cable
    trayer_start
}

teardown()
{
    [[ -z ${MONITOR:-} ]] || end "$MONITOR"
    end "$PANEL"
    xdotool mousemove 300 200
}

teardown_file()
{
    desktop_stop
}

# How many pixels of the menu are as dark as the text of an entry that can be chosen.
dark_pixels()
{
    import -silent -window "$(menus_of "$MONITOR")" "$DESKTOP/menu.png"
    convert "$DESKTOP/menu.png" -shave 3x3 -fuzz 25% -fill white +opaque black -fill black -opaque black \
        -colorspace gray -threshold 50% -negate -format '%[fx:int(mean*w*h+0.5)]' info:
}

# There are letters, and more of the menu is none.
menu_is_drawn()
{
    local dark size
    dark=$(dark_pixels)
    size=$(convert "$DESKTOP/menu.png" -format '%[fx:w*h]' info:)
    ((dark > 0 && dark < size / 4))
}

menu_has_more_dark_pixels_than()
{
    (($(dark_pixels) > $1 + 50))
}

@test "the icon is green with a network and red without" {
    monitor_start
    until_true icon_is "$green"
    pull_cable
    until_true icon_is "$red"
    not icon_is "$green"
    plug_cable
    until_true icon_is "$green"
}

@test "either button opens the menu where the pointer is" {
    monitor_start
    until_true icon_is "$green"
    for button in 1 3; do
        click "$green" "$button"
        until_true has_menu "$MONITOR"
        eval "$(xdotool getwindowgeometry --shell "$(menus_of "$MONITOR")")"
        menu="$X $Y"
        eval "$(xdotool getmouselocation --shell)"
        [[ $menu == "$X $Y" ]]
        xdotool key Escape
        until_true not has_menu "$MONITOR"
    done
}

@test "the open menu follows the network" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 1
    until_true has_menu "$MONITOR"
    until_true menu_is_drawn
    before=$(dark_pixels)
    pull_cable
    until_true menu_has_more_dark_pixels_than "$before"
    xdotool key Escape
}

@test "the menu quits the monitor" {
    monitor_start
    until_true icon_is "$green"
    click "$green" 1
    until_true has_menu "$MONITOR"
    xdotool key Up Return
    monitor_ended 0
    [[ -z $(monitor_output) ]]
    until_true not icon_is "$green"
}

@test "a tray that is restarted shows the icon again" {
    monitor_start
    until_true icon_is "$green"
    end "$PANEL"
    until_true not icon_is "$green"
    trayer_start
    until_true icon_is "$green"
}

@test "a tray that comes after the monitor shows the icon" {
    end "$PANEL"
    monitor_start
    until_true name_is_owned com.zelmor.Monitor
    trayer_start
    until_true icon_is "$green"
}

@test "without a session bus the icon is there all the same" {
    DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent monitor_start
    until_true icon_is "$green"
    [[ -z $(monitor_output) ]]
}
