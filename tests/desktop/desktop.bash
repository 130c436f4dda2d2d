# shellcheck shell=bash
# A throw-away desktop for one bats file: an X server, a session bus, a home and a network of its own.
# Source it in setup_file, setup and the tests' file; needs bats' own variables.

export green='#1f9d4d' red='#d92b2b'
patience=${VELQ_PATIENCE:-40}

need()
{
    local program
    for program in "$@"; do
        command -v "$program" >/dev/null || skip "$program is not installed"
    done
}

# until_true COMMAND...: for what has no event to wait for.
until_true()
{
    local deadline=$((SECONDS + patience))
    until "$@"; do
        ((SECONDS < deadline)) || { echo "never came true: $*" >&2; return 1; }
        sleep 0.05
    done
}

not()
{
    ! "$@"
}

# Everything runs in one network namespace; where it takes a user namespace to get one, in that too.
in_network()
{
    if ((EUID == 0)); then
        nsenter --target "$NETWORK" --net "$@"
    else
        nsenter --target "$NETWORK" --user --net --preserve-credentials "$@"
    fi
}

# start NAME COMMAND...: in the background; its process id is then in $NAME and in the list of what to end.
start()
{
    local name=$1
    shift
    if ((EUID == 0)); then
        nsenter --target "$NETWORK" --net "$@" </dev/null >>"$DESKTOP/$name.log" 2>&1 3>&- &
    else
        nsenter --target "$NETWORK" --user --net --preserve-credentials "$@" \
            </dev/null >>"$DESKTOP/$name.log" 2>&1 3>&- &
    fi
    printf -v "$name" %s $!
    echo $! >>"$DESKTOP/pids"
}

# end PID: politely, then firmly; a panel may hang without its X server.
end()
{
    kill "$1" 2>/dev/null || return 0
    for _ in {1..40}; do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.05
    done
    kill -KILL "$1" 2>/dev/null || true
}

network_start()
{
    local kind=(--net)
    ((EUID == 0)) || kind+=(--map-root-user)
    mkfifo "$DESKTOP/ready"
    # shellcheck disable=SC2016 # the inner shell expands it
    unshare "${kind[@]}" sh -c 'echo >"$1"; exec sleep infinity' - "$DESKTOP/ready" </dev/null 3>&- &
    export NETWORK=$!
    echo $! >>"$DESKTOP/pids"
    read -r -t "$patience" <"$DESKTOP/ready" || return 1
    in_network ip link set lo up
    in_network ip link add lan0 type veth peer name far0
    in_network ip link set lan0 up
    in_network ip addr add 192.168.7.2/24 dev lan0
    plug_cable
}

plug_cable()
{
    in_network ip link set far0 up
    in_network ip route replace default via 192.168.7.1
}

pull_cable()
{
    in_network ip link set far0 down
}

x_answers()
{
    xprop -root >/dev/null 2>&1
}

# Other users may show windows on it, too, as in a booted machine. Not in the network namespace: servers of several
# namespaces would all take the same free number, and with it the same socket file.
x_start()
{
    Xvfb -displayfd 5 -screen 0 640x240x24 -nolisten tcp -noreset -ac \
        </dev/null 5>"$DESKTOP/display" >>"$DESKTOP/XSERVER.log" 2>&1 3>&- &
    echo $! >>"$DESKTOP/pids"
    until_true test -s "$DESKTOP/display"
    DISPLAY=:$(<"$DESKTOP/display")
    export DISPLAY
    until_true x_answers
}

bus_start()
{
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus
    start BUS dbus-daemon --session --nofork --nopidfile --nosyslog --address="$DBUS_SESSION_BUS_ADDRESS"
    export BUS
    # The socket is there before anybody listens.
    until_true name_is_owned org.freedesktop.DBus
}

desktop_start()
{
    need Xvfb dbus-daemon unshare nsenter xdotool xprop import convert
    export DESKTOP=$BATS_FILE_TMPDIR HOME=$BATS_FILE_TMPDIR/home
    export XDG_RUNTIME_DIR=$DESKTOP/run XDG_CONFIG_HOME=$HOME/.config XDG_CACHE_HOME=$HOME/.cache
    export XDG_DATA_HOME=$HOME/.local/share XDG_SESSION_TYPE=x11 GDK_BACKEND=x11 NO_AT_BRIDGE=1 LANG=C.UTF-8
    unset WAYLAND_DISPLAY XDG_CURRENT_DESKTOP SESSION_MANAGER QT_QPA_PLATFORM QT_QPA_PLATFORMTHEME
    mkdir -p "$XDG_CONFIG_HOME"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    network_start || skip "the kernel gives no network namespace"
    x_start
    bus_start
}

# Clients first, the X server and the network last.
desktop_stop()
{
    local pid
    [[ -e ${DESKTOP:-}/pids ]] || return 0
    for pid in $(tac "$DESKTOP/pids"); do
        end "$pid"
    done
}

name_is_owned()
{
    in_network dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.NameHasOwner "string:$1" 2>/dev/null | grep -q 'boolean true'
}

# A panel with a place for StatusNotifierItems and none for XEmbed icons.
lxqt_panel_settings()
{
    mkdir -p "$XDG_CONFIG_HOME/lxqt"
    cat >"$XDG_CONFIG_HOME/lxqt/panel.conf" <<'CONF'
panels=panel1
[panel1]
plugins=statusnotifier
position=Bottom
desktop=0
alignment=-1
iconSize=22
panelSize=32
width-percent=true
width=100
[statusnotifier]
alignment=Right
type=statusnotifier
CONF
}

lxqt_panel_start()
{
    lxqt_panel_settings
    start PANEL env XDG_CURRENT_DESKTOP=LXQt lxqt-panel
    until_true name_is_owned org.kde.StatusNotifierWatcher
}

# A tray in the upper left corner, where a menu has room on its lower right.
trayer_start()
{
    start PANEL trayer --edge top --align left --widthtype request --height 24 --SetDockType true
}

monitor_start()
{
    start MONITOR "$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/VelqMonitor"
}

# icon_at COLOUR: the middle of the icon of that colour, "x y"; false when there is none.
icon_at()
{
    import -silent -window root "$DESKTOP/screen.png"
    icon_was_at "$1"
}

# icon_was_at COLOUR: when the screen was last looked at.
icon_was_at()
{
    local x y width height
    read -r x y width height < <(convert "$DESKTOP/screen.png" -fuzz 8% -fill black +opaque "$1" -trim \
        -format '%X %Y %w %h\n' info: 2>/dev/null | tr -d +)
    ((${width:-0} >= 10 && width <= 40 && height <= 40)) && echo "$((x + width / 2)) $((y + height / 2))"
}

icon_is()
{
    icon_at "$1" >/dev/null
}

# click COLOUR BUTTON: on the icon of that colour.
click()
{
    local place
    place=$(icon_at "$1")
    # shellcheck disable=SC2086
    xdotool mousemove $place click "$2"
}

# The windows that a process shows which are larger than an icon.
menus_of()
{
    local window height
    for window in $(xdotool search --onlyvisible --pid "$1" 2>/dev/null); do
        height=$(xdotool getwindowgeometry --shell "$window" 2>/dev/null | sed -n s/HEIGHT=//p)
        ((${height:-0} > 60 && height < 200)) && echo "$window"
    done
    return 0
}

has_menu()
{
    [[ $(menus_of "$1" | wc -l) == 1 ]]
}

# monitor_ended STATUS: waits for the monitor and compares how it ended.
monitor_ended()
{
    local status=0
    wait "$MONITOR" || status=$?
    [[ $status == "$1" ]]
}

# What the monitor wrote; it has nothing to say to a desktop.
monitor_output()
{
    cat "$DESKTOP/MONITOR.log"
}
