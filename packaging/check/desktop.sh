# What a person does and sees on the machine. To be sourced.
# shellcheck shell=bash

settings=/home/person/.config/klova/preferences.json
entry=/home/person/.config/autostart/klova.desktop
display='' picture=0

person() {
    setpriv --reuid=person --regid=person --init-groups \
        env HOME=/home/person USER=person DISPLAY="$display" "$@"
}
apt() { apt-get -q -y --no-install-recommends "$@" >>/var/log/klova-apt.log 2>&1; }

look() {
    picture=$((picture + 1))
    person import -window root png:- >"/pictures/$(printf '%02d' "$picture")-$1.png"
}
fail() {
    printf 'FAILED: %s\n' "$1"
    look failed || true
    exit 1
}
# expect <what> <command...>: it comes true within 20 seconds.
expect() {
    local what=$1 end=$((SECONDS + 20))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "$what"
        sleep 0.1
    done
    printf '  %s\n' "$what"
}
not() { ! "$@"; }

shows() { person xdotool search --onlyvisible --name "$1"; }
has_class() { person xdotool search --onlyvisible --class "^$1\$"; }
click() { person xdotool mousemove "$1" "$2" click 1; }
# place <windows>: sets X, Y, WIDTH and HEIGHT, in pixels from the screen's upper left corner.
place() { eval "$(person xdotool search "$@" getwindowgeometry --shell)"; }

log_in() {
    mkfifo /packages/display
    person Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>/packages/display 2>>/var/log/klova-session.log &
    read -r display </packages/display
    display=:$display
    rm /packages/display
    person dbus-run-session openbox-session >>/var/log/klova-session.log 2>&1 &
    expect 'a desktop appears' has_class tint2
    expect 'with a terminal' has_class xterm
}
log_out() {
    kill "$(pgrep -x Xvfb)" # as a display manager does
    expect 'the session ends' not pgrep -u person
}

window_of_klova() { person xwininfo -root -tree | grep "(\"klova\" \"klova\")  $1+"; }
in_tray() { window_of_klova 22x22; }
menu_is_open() { window_of_klova '[0-9]\{3\}x[0-9]\{3\}'; }
opens_preferences() {
    click 1268 780
    expect 'a click on the icon in the tray opens the menu' menu_is_open
    person xdotool key Down Return
    expect 'the menu opens the preferences' shows 'Preferences of Klova'
}
launches_at_login() { grep -q '"LoadsOnStartup": true' "$settings" && [[ -f $entry ]]; }
entry_is_passed_over() {
    person /usr/lib/*/openbox-xdg-autostart --list | grep 'Excluded by: TryExec'
}

is_in_half() {
    local X=0 WIDTH=0
    place --class '^xterm$'
    if [[ $1 == Left ]]; then ((X < 40 && X + WIDTH <= 640)); else ((X >= 640)); fi
}
snaps() {
    ! is_in_half "$1" || fail "the terminal is in the half of $1 already"
    person xdotool search --class '^xterm$' windowactivate --sync
    person xdotool keydown Super_L keydown Control_L key "$1" keyup Control_L keyup Super_L
    expect "Super, Ctrl and $1 move the terminal into that half" is_in_half "$1"
}

new_one_runs() {
    [[ $(readlink "/proc/$(pgrep -x klova)/exe") == /usr/bin/klova ]]
}
own() { sha256sum "$settings" "$entry"; }
keeps() {
    [[ $(own) == "$1" ]] || fail 'the settings have changed'
    printf '  the settings and the entry of the autostart are as they were\n'
}
# What bears the name, but for the person's own, and what was in the package and is in none now.
left_behind() {
    find / -xdev \( -path /proc -o -path /home/person/.config -o -path '/var/log/klova-*.log' \) \
        -prune -o -iname '*klova*' -print
    local file
    while read -r file; do
        [[ ! -e $file ]] || dpkg -S "$file" >/dev/null || printf '%s\n' "$file"
    done </packages/files
}
leaves_nothing() {
    local left
    left=$(left_behind)
    [[ -z $left ]] || fail "left behind: $left"
    printf '  nothing else is left behind\n'
}
