#!/usr/bin/env bats
# The monitor as the launch agent that it is installed as, in a booted machine with a desktop.

# shellcheck source-path=SCRIPTDIR/../support
source "$BATS_TEST_DIRNAME/../support/agents.bash"

setup()
{
    need_machine
    need Xvfb lxqt-panel gdbus
    # shellcheck disable=SC2119 # it needs no options
    boot_machine
    add_person
    label=com.zelmor.Monitor
    unit=$label.service
    monitor=$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/VelqMonitor
    agent_file=$home/Library/LaunchAgents/$label.plist
    property_list "$monitor" "$label" | write_as_person "$agent_file"
}

teardown()
{
    stop_machine
    stop_everything
}

# An X server and a panel for the icon.
start_screen()
{
    screen=(DISPLAY=:9 "$(persons_bus)")
    start server as_person Xvfb :9 -screen 0 640x240x24 -nolisten tcp -noreset
    until_true is_there /tmp/.X11-unix/X9
    write_as_person "$home/.config/lxqt/panel.conf" <<'CONF'
panels=panel1
[panel1]
plugins=statusnotifier
position=Bottom
[statusnotifier]
type=statusnotifier
CONF
    start panel as_person "${screen[@]}" XDG_CURRENT_DESKTOP=LXQt lxqt-panel
    until_true is_named org.kde.StatusNotifierWatcher
}

is_there()
{
    [[ -e $machine_root$1 ]]
}

on_bus()
{
    as_person "$(persons_bus)" gdbus call --session "$@"
}

# is_named BEGINNING: somebody on the person's bus is.
is_named()
{
    [[ $(on_bus --dest org.freedesktop.DBus --object-path / \
        --method org.freedesktop.DBus.ListNames) == *"'$1"* ]]
}

main_pid()
{
    as_person systemctl --user show --property MainPID --value "$unit"
}

# Sets pid to the monitor's, when its icon is there.
await_icon()
{
    until_state active
    pid=$(main_pid)
    until_true is_named "org.kde.StatusNotifierItem-$pid-"
}

# choose TITLE: in the icon's menu, as a panel does.
choose()
{
    local item id
    item=$(on_bus --dest org.freedesktop.DBus --object-path / --method org.freedesktop.DBus.ListNames \
        | grep -o "org.kde.StatusNotifierItem-$pid-[0-9]*")
    id=$(on_bus --dest "$item" --object-path /MenuBar --method com.canonical.dbusmenu.GetGroupProperties '[]' '[]' \
        | grep -oE "\([0-9]+, \{[^}]*'label': <'$1'>" | grep -oE '^\([0-9]+')
    on_bus --dest "$item" --object-path /MenuBar --method com.canonical.dbusmenu.Event -- "${id#(}" clicked '<0>' 0
}

# Sets main_log: what the main application tells, which the preferences name.
install_main_application()
{
    local bundle=$home/Applications/Velq.app/Contents
    write_as_person "$bundle/Info.plist" <<LIST
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>com.zelmor.Velq</string></dict></plist>
LIST
    write_as_person "$bundle/MacOS/Velq" <"$VELQ_BUILD/tests/support/application/test_application"
    as_person chmod 755 "$bundle/MacOS/Velq"
    open_stream main
    chmod 755 "$here"
    chmod 666 "$here/main.out"
    as_person ln -s "$here/main.out" "$bundle/log"
    write_as_person "$home/Library/Preferences/com.zelmor.Velq.plist" <<LIST
<plist version="1.0"><dict><key>appPath</key><string>${bundle%/Contents}</string></dict></plist>
LIST
}

@test "the monitor's own tool loads it, its icon appears, and killed it comes back" {
    start_screen
    as_person "${screen[@]}" "$VELQ_BUILD/VelqMonitor.app/Contents/Helpers/launchctl" load "$agent_file"
    await_icon
    first=$pid
    "${machine[@]}" kill -KILL "$first"
    until_true runs_anew "$first"
    await_icon
}

runs_anew()
{
    [[ $(main_pid) != 0 && $(main_pid) != "$1" ]]
}

@test "quit from its menu, it stays away until the next log-in, and the main application is asked to end" {
    install_main_application
    start_screen
    with_display "${screen[@]}" -- load "$agent_file"
    await_icon
    start application as_person "$home/Applications/Velq.app/Contents/MacOS/Velq"
    expect_line main '^opened$'
    choose Quit
    expect_line main '^terminated$'
    until_state inactive
    expect_silence main 2
    [[ $(unit_state) == inactive ]]
    [[ -s $machine_root$agent_file ]]
    as_person "${screen[@]}" gio launch ".config/autostart/$label.agent.desktop"
    await_icon
}

windows_are_managed()
{
    [[ $(as_person "${screen[@]}" xprop -root _NET_SUPPORTING_WM_CHECK) == *'window id'* ]]
}

# The window manager says so before the X server does.
active_window_is()
{
    [[ $(as_person "${screen[@]}" xdotool getactivewindow getwindowname getwindowfocus getwindowname 2>&1) == "$1"$'\n'"$1" ]]
}

# Again, if need be: the window manager may still be busy with the other window.
opens_in_front()
{
    choose 'Open Velq' && active_window_is Velq
}

@test "an application that is on no bus is brought forward by its window" {
    need openbox xdotool xev xprop
    install_main_application
    start_screen
    start manager as_person "${screen[@]}" openbox --sm-disable
    until_true windows_are_managed
    with_display "${screen[@]}" -- load "$agent_file"
    await_icon
    start application as_person DISPLAY=:9 XDG_RUNTIME_DIR=/nowhere "$home/Applications/Velq.app/Contents/MacOS/Velq"
    expect_line main '^opened$'
    until_true active_window_is Velq
    start other as_person "${screen[@]}" xev
    until_true active_window_is 'Event Tester'
    until_true opens_in_front
}

@test "what it opens outlives it" {
    install_main_application
    start_screen
    with_display "${screen[@]}" -- load "$agent_file"
    await_icon
    choose 'Open Velq'
    expect_line main '^opened$'
    choose 'Open Velq'
    expect_line main '^activated$'
    launchctl unload "$agent_file"
    expect_silence main 2
}

# In milliseconds, so far.
processor_time_of_unit()
{
    echo $(($(as_person systemctl --user show --property CPUUsageNSec --value "$unit") / 1000000))
}

@test "without a display it watches on, and tells the journal" {
    launchctl load "$agent_file"
    until_true journal_has 'No network connection'
    before=$(processor_time_of_unit)
    pid=$(main_pid)
    pause 2
    [[ $(main_pid) == "$pid" ]]
    (($(processor_time_of_unit) - before < 200))
}

journal_has()
{
    [[ $("${machine[@]}" journalctl --quiet "_SYSTEMD_USER_UNIT=$unit" --output cat) == *"$1"* ]]
}

@test "an agent that finds another monitor waits for its end" {
    start other as_person "$(persons_bus)" "$monitor" --console
    expect_line other 'No network connection'
    launchctl load "$agent_file"
    until_state active
    pid=$(main_pid)
    expect_silence other 2
    [[ $(main_pid) == "$pid" ]]
    as_person pkill -TERM -f "$monitor --console"
    until_true is_named com.zelmor.Monitor
    [[ $(main_pid) == "$pid" ]]
    launchctl unload "$agent_file"
    [[ $(unit_state) == inactive ]]
}
