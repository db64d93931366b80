#!/usr/bin/env bash
# On the machine, without a network: from the first start of Klova to its removal.
set -euo pipefail
# shellcheck source=packaging/check/desktop.sh
source desktop.sh

printf 'The first start\n'
log_in
look desktop
click 16 780
expect 'a click on the launcher of the desktop entry opens the tour' shows 'Welcome to Klova'
look tour
person xdotool key Escape
expect 'Escape closes it' not shows 'Welcome to Klova'
expect 'Klova is in the tray' in_tray
snaps Left
look gesture
opens_preferences
X=0 Y=0
place --name 'Preferences of Klova'
click $((X + 292)) $((Y + 448))
expect 'the switch makes it launch at login' launches_at_login
desktop-file-validate "$entry"
look preferences

printf 'The next login\n'
log_out
log_in
expect 'Klova is in the tray' in_tray
snaps Right
look next-login

printf 'An upgrade while it runs\n'
kept=$(own)
apt install /packages/newer.deb
printf '  version %s is there\n' "$(dpkg-query -W -f '${Version}' klova)"
keeps "$kept"
snaps Left
opens_preferences
look upgraded
log_out
log_in
expect 'the new one runs' new_one_runs
expect 'and is in the tray' in_tray
snaps Right
keeps "$kept"

printf 'A removal while it runs\n'
apt remove klova
keeps "$kept"
leaves_nothing
snaps Left
log_out
log_in
expect 'the session passes over its entry' entry_is_passed_over
expect 'and Klova does not run' not pgrep -x klova
look removed

printf 'Installed again, and purged\n'
apt install /packages/newer.deb
log_out
log_in
expect 'Klova is in the tray' in_tray
snaps Right
look installed-again
apt purge klova
keeps "$kept"
leaves_nothing
