# The packages that Klova is built, shown, tested and measured with, and how the scripts get them.
# To be sourced from the project's root.

build_packages=(
    g++ cmake ninja-build pkg-config
    qt6-base-dev qt6-svg-dev nlohmann-json3-dev libglib2.0-dev libgtest-dev
    libx11-dev libxcb1-dev libxcb-xinput-dev libxcb-randr0-dev libxcb-xkb-dev libxcb-res0-dev
    libxcb-xfixes0-dev libxcb-xtest0-dev libxcb-shape0-dev libxcb-composite0-dev libxcb-record0-dev
    libxkbcommon-dev libxkbcommon-x11-dev librsvg2-bin
)
demo_packages=(
    xvfb dbus openbox tint2
    xcompmgr xterm mousepad x11-apps
    imagemagick fonts-dejavu-core
)
nested_packages=(xserver-xephyr)
view_packages=(tigervnc-scraping-server novnc websockify)
test_packages=(
    xfwm4 marco mate-settings-daemon-common metacity mutter kwin-x11 kwin-style-breeze
    icewm fluxbox jwm i3-wm awesome
    trayer xfce4-panel xfconf libglib2.0-bin at-spi2-core
    dex desktop-file-utils dunst xauth i3lock faketime weston xwayland
    xsettingsd xserver-xephyr x11-xserver-utils
    clang libclang-rt-14-dev
)
session_packages=(
    xfce4-session xfce4-panel xfdesktop4 xfce4-settings xfwm4 xfce4-notifyd xfconf xcape
    mate-session-manager mate-panel mate-settings-daemon mate-notification-daemon marco caja
    lxqt-session lxqt-panel lxqt-globalkeys lxqt-notificationd lxqt-runner lxqt-config pcmanfm-qt
    openbox
    dconf-gsettings-backend dconf-service adwaita-icon-theme
)
bench_packages=(
    xfwm4 marco mate-settings-daemon-common kwin-x11 kwin-style-breeze
    xfce4-panel xfconf libglib2.0-bin
    sxhkd wmctrl binutils
)
lint_packages=(clang-format clang-tidy doxygen)
package_packages=(build-essential debhelper lintian desktop-file-utils appstream man-db)
check_packages=(debootstrap)

mkdir -p build

# progress <log>: where a running command stands, from the last line it wrote.
progress() {
    tail -c 400 "$1" | tr '\r' '\n' | grep . | tail -n 1 | cut -c 1-60
}

# phase <what> <log> <command...>: runs the command with its output in the log, shows one line of
# how far it is, and the end of the log where it fails.
phase() {
    local what=$1 log=$2 start=$SECONDS status=0
    shift 2
    : >"$log"
    "$@" >>"$log" 2>&1 </dev/null &
    local pid=$!
    printf '%s ...' "$what"
    while kill -0 "$pid" 2>/dev/null; do
        sleep 0.5
        if [[ -t 1 ]]; then
            printf '\r\033[K%s ... %s' "$what" "$(progress "$log" || true)"
        elif (((SECONDS - start) % 10 == 9)); then
            printf '.'
            sleep 1
        fi
    done
    wait "$pid" || status=$?
    [[ -t 1 ]] && printf '\r\033[K%s ...' "$what"
    if ((status != 0)); then
        printf ' failed. The end of %s:\n\n' "$log"
        tail -n 60 "$log"
        exit 1
    fi
    printf ' done (%d s)\n' $((SECONDS - start))
}

# missing <package...>: those that are not installed.
missing() {
    comm -13 <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
        sed -n 's/^installed //p' | sort -u) <(printf '%s\n' "$@" | sort -u)
}

as_root() {
    if ((EUID == 0)); then env "$@"; else sudo env "$@"; fi
}

# The lists of packages are fetched only where they are too old, or not there, to install from.
apt_install() {
    local install=(DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends)
    as_root "${install[@]}" "$@" || { as_root apt-get update -q && as_root "${install[@]}" "$@"; }
}

# need <package...>: gets what is missing, asking for a password only where something is.
need() {
    if ! command -v apt-get >/dev/null; then
        printf 'No apt-get here: these packages, or what they are called, have to be there: %s\n' "$*"
        return
    fi
    local wanted
    mapfile -t wanted < <(missing "$@")
    ((${#wanted[@]} > 0)) || return 0
    if ((EUID != 0)); then
        printf 'Needed and not installed: %s\n' "${wanted[*]}"
        sudo -v || { printf 'Installing them takes the rights of root.\n' && exit 1; }
    fi
    phase "Installing ${#wanted[@]} packages" build/install.log apt_install "${wanted[@]}"
}

# build <preset> [target...]: everything where no target is named.
build() {
    local preset=$1 targets=()
    shift
    (($# > 0)) && targets=(--target "$@")
    [[ -f build/$preset/build.ninja ]] ||
        phase "Configuring" "build/configure-$preset.log" cmake --preset "$preset"
    phase "Building" "build/build-$preset.log" cmake --build --preset "$preset" "${targets[@]}"
}
