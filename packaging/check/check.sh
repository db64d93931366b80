#!/usr/bin/env bash
# check.sh <package> <folder>, as root: tries the package on a machine that has nothing but the base
# of the system it was made on, and puts pictures of the steps into the folder.
set -euo pipefail

package=$1 pictures=$2
here=$(dirname "$0")
machine=$(mktemp -d /var/tmp/klova-check-XXXXXX)
chmod 755 "$machine"
trap 'rm -rf --one-file-system "$machine"' EXIT

# Mounts and programs are of the machine alone, and gone with it whatever happens.
on_machine() {
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child sh -ec '
        mount -t proc proc "$0/proc"
        mount -t devpts -o newinstance,ptmxmode=666 devpts "$0/dev/pts"
        exec chroot "$0" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive http_proxy="${http_proxy-}" "$@"' "$machine" "$@"
}

# The version after the one that is checked.
repack() {
    dpkg-deb --raw-extract "$package" "$machine/next"
    sed -i 's/^Version: .*/&+1/' "$machine/next/DEBIAN/control"
    dpkg-deb --root-owner-group --build "$machine/next" "$machine/packages/newer.deb" >/dev/null
    rm -r "$machine/next"
}

eval "$(apt-config shell http_proxy Acquire::http::Proxy)"
export http_proxy=${http_proxy-}
suite=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
debootstrap --variant=minbase "$suite" "$machine" >"$pictures/debootstrap.log"
mkdir "$machine/packages" "$machine/pictures"
cp "$package" "$machine/packages/older.deb"
repack
cp "$here"/{prepare,story,desktop}.sh "$machine"

status=0
on_machine bash prepare.sh || status=$?
((status != 0)) || on_machine unshare --net bash story.sh || status=$?
cp -t "$pictures" "$machine"/var/log/klova-*.log "$machine"/pictures/*.png
exit "$status"
