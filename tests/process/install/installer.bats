#!/usr/bin/env bats
# The installer of the monitor, used by a main application in a home of its own; launchctl is a fake that writes
# down how it is called and what the agent's file says at that moment.

source "$BATS_TEST_DIRNAME/../../support/processes.bash"

setup()
{
    mkdir -p "$here/home" "$here/bin"
    host=$here/Host.app
    agents=$here/home/Library/LaunchAgents
    agent=$agents/com.zelmor.Monitor.plist
    support="$here/home/Library/Application Support/Velq"
    app=$support/VelqMonitor.app
    preferences=$here/home/Library/Preferences/com.zelmor.Velq.plist
    make_launchctl
    make_host 10
    make_shipped
}

make_launchctl()
{
    cat >"$here/bin/launchctl" <<TOOL
#!/bin/sh
echo "\$*" >>'$here/calls'
[ ! -e '$app/Contents/old' ] || echo "\$1" >>'$here/with-old'
cp "\$2" '$here/seen.plist'
TOOL
    chmod +x "$here/bin/launchctl"
}

# information PAIRS...: an information dictionary of texts.
information()
{
    printf '<plist version="1.0"><dict>'
    printf '<key>%s</key><string>%s</string>' "$@"
    printf '</dict></plist>\n'
}

# make_host VERSION: the main application around the program that calls the installer.
make_host()
{
    mkdir -p "$host/Contents/MacOS" "$host/Contents/Resources"
    ln -sf "$VELQ_BUILD/tests/process/install/installer_host" "$here/built"
    cp -f "$(realpath "$here/built")" "$host/Contents/MacOS/Host"
    information CFBundleIdentifier com.zelmor.Velq CFBundleName Velq CFBundleVersion "$1" >"$host/Contents/Info.plist"
}

# The bundle among its resources, with all that a bundle may hold.
make_shipped()
{
    shipped=$host/Contents/Resources/VelqMonitor.app
    mkdir -p "$shipped/Contents/MacOS" "$shipped/Contents/Helpers" "$shipped/Contents/Resources/empty" "$here/elsewhere"
    information CFBundleIdentifier com.zelmor.Monitor CFBundleExecutable VelqMonitor CFBundleVersion 10 \
        >"$shipped/Contents/Info.plist"
    printf '#!/bin/sh\n' >"$shipped/Contents/MacOS/VelqMonitor"
    chmod 755 "$shipped/Contents/MacOS/VelqMonitor"
    echo picture >"$shipped/Contents/Resources/icon.png"
    chmod 640 "$shipped/Contents/Resources/icon.png"
    printf '#!/bin/sh\necho tool\n' >"$here/elsewhere/tool"
    chmod 755 "$here/elsewhere/tool"
    ln -s "$here/elsewhere/tool" "$shipped/Contents/Helpers/tool"
    ln -s ../MacOS/VelqMonitor "$shipped/Contents/Helpers/own"
    ln -s nowhere "$shipped/Contents/Helpers/dangling"
}

# ask OPERATION...: sets answer; nothing may be complained about.
ask()
{
    answer=$(timeout --signal=KILL "$patience" env -u XDG_RUNTIME_DIR -u XDG_CONFIG_HOME -u DBUS_SESSION_BUS_ADDRESS \
        "HOME=$here/home" "PATH=$here/bin:$PATH" "$host/Contents/MacOS/Host" "$@" 2>"$here/errors")
    [[ ! -s $here/errors ]] || complain "$1 complained: $(<"$here/errors")"
}

# expect_answer TEXT OPERATION...
expect_answer()
{
    ask "${@:2}"
    [[ $answer == "$1" ]] || complain "$2 answered '$answer', not '$1'"
}

# expect_calls LINES...: of launchctl, since the last time.
expect_calls()
{
    local calls
    calls=$(cat "$here/calls" 2>/dev/null || true)
    rm -f "$here/calls"
    [[ $calls == "$(printf '%s\n' "$@")" ]] || complain "launchctl was called: $calls"
}

# write_agent VERSION
write_agent()
{
    mkdir -p "$agents"
    printf '<plist version="1.0"><dict><key>Label</key><string>com.zelmor.Monitor</string>%s</dict></plist>\n' \
        "<key>Version</key><integer>$1</integer>" >"$agent"
}

# An installed bundle that is not the shipped one.
place_old_app()
{
    mkdir -p "$app/Contents/MacOS"
    information CFBundleIdentifier com.zelmor.Monitor >"$app/Contents/Info.plist"
    touch "$app/Contents/old"
}

# value_of KEY: in the agent's file.
value_of()
{
    grep -A1 "<key>$1</key>" "$agent" | sed -n '2s/^[[:space:]]*//p'
}

expect_agent()
{
    [[ $(value_of KeepAlive) == '<true/>' ]]
    [[ $(value_of Label) == '<string>com.zelmor.Monitor</string>' ]]
    [[ $(value_of Version) == "<integer>$1</integer>" ]]
    [[ $(value_of Program) == "<string>$app/Contents/MacOS/VelqMonitor</string>" ]]
    [[ $(grep -c '<key>' "$agent") == 4 ]]
    cmp "$agent" "$here/seen.plist"
}

expect_shipped_app()
{
    [[ ! -e $app/Contents/old ]]
    [[ -x $app/Contents/MacOS/VelqMonitor ]]
    [[ $(ls -A "$support") == VelqMonitor.app ]]
}

expect_old_app()
{
    [[ -e $app/Contents/old ]]
}

@test "paths are those of the home folder, and folders are made" {
    expect_answer "$agents" launchAgentPath
    [[ -d $agents ]]
    expect_answer "$agent" miniLaunchAgent
    expect_answer '(null)' miniLaunchAgentPath
    expect_answer "$support/" pallidorPath
    [[ -d $support ]]
    expect_answer "$app" createdMiniAppPath
    expect_answer '(null)' miniAppPath
    expect_answer "$shipped" bundleMiniPath
    expect_answer 10 menubarVersion
    expect_answer '(null)' miniExePath
    expect_answer '(null)' label

    write_agent 10
    expect_answer "$agent" miniLaunchAgentPath
    mkdir "$app"
    expect_answer "$app" miniAppPath
    expect_answer '(null)' miniExePath
    rm -r "$shipped"
    expect_answer '(null)' bundleMiniPath
}

@test "the folder is called as people call the application" {
    information CFBundleName Velq CFBundleDisplayName 'Velq Care' >"$host/Contents/Info.plist"
    expect_answer "$here/home/Library/Application Support/Velq Care/" pallidorPath
}

@test "a folder that cannot be made is named all the same" {
    touch "$here/home/Library"
    expect_answer "$agents" launchAgentPath
    expect_answer "$support/" pallidorPath
    expect_answer '(null)' miniLaunchAgentPath
    ask installOrroMenuBar
    expect_calls ''
    [[ ! -s $here/home/Library ]]
}

@test "the version is the whole number that the text begins with" {
    local version
    for version in 1.0.0:1 12:12 -3:-3 text:0 "''":0 ' 7 ':7; do
        make_host "${version%:*}"
        expect_answer "${version##*:}" menubarVersion
    done
    printf '<plist version="1.0"><dict><key>CFBundleVersion</key><integer>8</integer></dict></plist>' \
        >"$host/Contents/Info.plist"
    expect_answer 8 menubarVersion
    rm "$host/Contents/Info.plist"
    expect_answer 0 menubarVersion
    expect_answer "$here/home/Library/Application Support/Host/" pallidorPath
}

@test "launchctl runs for a file that is there, the option first" {
    touch "$here/agent"
    ask launchctlApplicationInPath "$here/agent" unload
    expect_calls "unload $here/agent"
    ask launchctlApplicationInPath "$here/none" load
    ask launchctlApplicationInPath
    expect_calls ''
    touch "$here/two words"
    ask launchctlApplicationInPath "$here/two words" load 2>/dev/null || true
    expect_calls "load $here/two words"
}

@test "a fresh account gets all of it" {
    ask installOrroMenuBar
    expect_calls "load $agent"
    expect_agent 10
    expect_shipped_app
    grep -A1 '<key>appPath</key>' "$preferences" | grep -q "<string>$host</string>"
    expect_answer "$app/Contents/MacOS/VelqMonitor" miniExePath
    expect_answer com.zelmor.Monitor label
}

@test "the copy is whole and needs nothing of where it came from" {
    ask installOrroMenuBar
    rm -r "$host/Contents/Resources" "$here/elsewhere"
    [[ $(<"$app/Contents/Resources/icon.png") == picture ]]
    [[ $(stat -c %a "$app/Contents/Resources/icon.png") == 640 ]]
    [[ -d $app/Contents/Resources/empty ]]
    [[ ! -L $app/Contents/Helpers/tool ]]
    [[ $("$app/Contents/Helpers/tool") == tool ]]
    [[ $(readlink "$app/Contents/Helpers/own") == ../MacOS/VelqMonitor ]]
    [[ $(readlink "$app/Contents/Helpers/dangling") == nowhere ]]
}

@test "the monitor as it was built runs from its copy" {
    rm -r "$shipped"
    cp -a "$VELQ_BUILD/VelqMonitor.app" "$shipped"
    [[ -L $shipped/Contents/Helpers/arp ]]
    ask installOrroMenuBar
    expect_agent 10
    [[ -z $(find "$app" -type l) ]]
    "$app/Contents/Helpers/arp" --version
    "$app/Contents/MacOS/VelqMonitor" --version
}

@test "with neither file nor bundle, both are made" {
    expect_answer true compareMiniVersionDecideIsReplace
    ask replaceMini
    expect_calls "load $agent"
    expect_agent 10
    expect_shipped_app
}

@test "with the file alone, it is unloaded and both are made" {
    write_agent 99
    expect_answer true compareMiniVersionDecideIsReplace
    ask replaceMini
    expect_calls "unload $agent" "load $agent"
    expect_agent 10
    expect_shipped_app
}

@test "with the bundle alone, it is kept and the file is made" {
    place_old_app
    cp "$shipped/Contents/MacOS/VelqMonitor" "$app/Contents/MacOS/"
    expect_answer true compareMiniVersionDecideIsReplace
    ask replaceMini
    expect_calls "load $agent"
    expect_agent 10
    expect_old_app
}

@test "with both, a higher version replaces them" {
    place_old_app
    write_agent 9
    expect_answer true compareMiniVersionDecideIsReplace
    ask installOrroMenuBar
    expect_calls "unload $agent" "load $agent"
    [[ $(<"$here/with-old") == unload ]]
    expect_agent 10
    expect_shipped_app
}

@test "an equal or lower version keeps both and notes the path" {
    local version
    place_old_app
    for version in 10 11 100; do
        write_agent "$version"
        cp "$agent" "$here/before"
        expect_answer false compareMiniVersionDecideIsReplace
        ask installOrroMenuBar
        expect_calls ''
        cmp "$agent" "$here/before"
        expect_old_app
        grep -q "<string>$host</string>" "$preferences"
        rm "$preferences"
    done
    make_host 9
    write_agent 10
    expect_answer false compareMiniVersionDecideIsReplace
}

@test "force replaces whatever is there" {
    place_old_app
    write_agent 10
    ask installOrroMenuBarWithForce
    expect_calls "unload $agent" "load $agent"
    expect_agent 10
    expect_shipped_app
    grep -q "<string>$host</string>" "$preferences"
}

@test "a file without a version, or damaged, counts as version 0" {
    place_old_app
    mkdir -p "$agents"
    echo '<plist version="1.0"><dict/></plist>' >"$agent"
    expect_answer true compareMiniVersionDecideIsReplace
    echo 'damaged' >"$agent"
    expect_answer true compareMiniVersionDecideIsReplace
    make_host 0
    expect_answer false compareMiniVersionDecideIsReplace
    write_agent -1
    expect_answer true compareMiniVersionDecideIsReplace
}

@test "a version below zero is written without its sign, and compared with it" {
    make_host -3
    ask installOrroMenuBar
    [[ $(value_of Version) == '<integer>18446744073709551613</integer>' ]]
    expect_answer false compareMiniVersionDecideIsReplace
    make_host -2
    expect_answer true compareMiniVersionDecideIsReplace
    make_host -4
    expect_answer false compareMiniVersionDecideIsReplace
}

@test "the version of the bundle itself is of no account" {
    place_old_app
    information CFBundleVersion 1 >"$app/Contents/Info.plist"
    write_agent 10
    expect_answer false compareMiniVersionDecideIsReplace
}

@test "without a shipped bundle the file lacks what cannot be found, and is loaded" {
    rm -r "$shipped"
    ask installOrroMenuBar
    expect_calls "load $agent"
    [[ $(value_of KeepAlive) == '<true/>' ]]
    [[ $(value_of Version) == '<integer>10</integer>' ]]
    [[ $(grep -c '<key>' "$agent") == 2 ]]
    [[ ! -e $app ]]
}

@test "a copy that fails leaves nothing that looks like a bundle" {
    mkfifo "$shipped/Contents/Resources/fifo"
    ask installOrroMenuBar
    [[ ! -e $app ]]
    [[ $(ls -A "$support") == '' ]]
}

@test "what a killed copy left is no bundle, and goes with the next" {
    mkdir -p "$support/.VelqMonitor.app.new/Contents" "$support/.VelqMonitor.app.old/Contents"
    touch "$support/.VelqMonitor.app.lock"
    expect_answer '(null)' miniAppPath
    write_agent 9
    place_old_app
    ask installOrroMenuBar
    expect_agent 10
    expect_shipped_app
}

@test "two installations at once leave one whole bundle" {
    local first second
    HOME=$here/home PATH=$here/bin:$PATH "$host/Contents/MacOS/Host" installOrroMenuBarWithForce &
    first=$!
    HOME=$here/home PATH=$here/bin:$PATH "$host/Contents/MacOS/Host" installOrroMenuBarWithForce &
    second=$!
    wait "$first" "$second"
    expect_shipped_app
    diff -r --no-dereference "$shipped/Contents/Resources" "$app/Contents/Resources"
    cmp "$here/elsewhere/tool" "$app/Contents/Helpers/tool"
}

@test "uninstalling unloads and takes both, and the path stays" {
    ask installOrroMenuBar
    expect_calls "load $agent"
    ask uninstallOrroMenuBar
    expect_calls "unload $agent"
    [[ $(ls -A "$agents") == '' ]]
    [[ $(ls -A "$support") == '' ]]
    grep -q "<string>$host</string>" "$preferences"
}

@test "uninstalling what is not there runs nothing" {
    ask uninstallOrroMenuBar
    expect_calls ''
    place_old_app
    ask uninstallOrroMenuBar
    expect_calls ''
    [[ ! -e $app ]]
    write_agent 10
    ask uninstallOrroMenuBar
    expect_calls "unload $agent"
    [[ ! -e $agent ]]
}

@test "uninstalling unloads before anything is deleted" {
    place_old_app
    write_agent 10
    ask uninstallOrroMenuBar
    expect_calls "unload $agent"
    [[ $(<"$here/with-old") == unload ]]
    [[ ! -e $agent && ! -e $app ]]
}

@test "a home with a blank in its name splits the line, and nothing fails" {
    mv "$here/home" "$here/my home"
    local answer
    answer=$(HOME="$here/my home" PATH=$here/bin:$PATH "$host/Contents/MacOS/Host" installOrroMenuBar 2>/dev/null)
    [[ $answer == '' ]]
    expect_calls "load $here/my home/Library/LaunchAgents/com.zelmor.Monitor.plist"
    [[ -x "$here/my home/Library/Application Support/Velq/VelqMonitor.app/Contents/MacOS/VelqMonitor" ]]
}

@test "without launchctl the files are made all the same" {
    rm "$here/bin/launchctl"
    ask installOrroMenuBar 2>/dev/null || true
    [[ -e $agent ]]
    [[ $(value_of Version) == '<integer>10</integer>' ]]
}
