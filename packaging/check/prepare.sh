#!/usr/bin/env bash
# On the machine, which has a network still: Klova with what it depends on, the programs of a small
# desktop, and a person who uses them.
set -euo pipefail

apt() { apt-get -q -y --no-install-recommends "$@" >>/var/log/klova-apt.log 2>&1; }

printf 'Installing\n'
apt update
apt install /packages/older.deb
printf '  %s, with %d packages that it depends on\n' "$(klova --version)" \
    "$(sed -n 's/.* \([0-9]*\) newly installed.*/\1/p' /var/log/klova-apt.log | awk '{print $1 - 1}')"
dpkg -L klova | grep -vx /. >/packages/files
apt install dbus openbox python3-xdg tint2 xvfb xterm xdotool x11-utils imagemagick procps \
    desktop-file-utils

useradd -m person
install -d -o person /home/person/.config/{,openbox,tint2}
cat >/home/person/.config/openbox/autostart <<'END'
tint2 &
xterm -geometry 80x24+300+200 &
END
cat >/home/person/.config/tint2/tint2rc <<'END'
panel_items = LTS
panel_size = 100% 40
strut_policy = follow_size
panel_position = bottom center horizontal
launcher_icon_size = 32
launcher_item_app = /usr/share/applications/klova.desktop
systray_icon_size = 22
END
