# shellcheck shell=bash
# shellcheck disable=SC2154  # what comes from the script that sources this
# An empty Debian 12, for scripts that try things where nothing else is installed. To be sourced behind lib.sh
# by a script that root runs in a mount space of its own, whose folder is in "work", and that sets cleanup.
# The empty system is made once and kept in build/clean-root.

suite=bookworm
root=$work/root
base=$ledora_root/build/clean-root/$suite.tar

traps() {
    trap cleanup EXIT
    trap 'exit 143' TERM HUP
    trap 'exit 130' INT
}

# What still runs in the root, such as dpkg after an apt-get that was ended: it would go on writing there.
end_inside() {
    local folder
    for folder in /proc/[0-9]*; do
        [[ $(readlink "$folder/root" 2>/dev/null || true) != "$root" ]] || end_process "${folder#/proc/}" 10
    done
}

remove_root() {
    local point
    for point in "$root/tmp/.X11-unix" "$root/tmp" "$root/dev" "$root/proc"; do
        ! mountpoint -q "$point" || umount --lazy "$point"
    done
    rm -rf --one-file-system "$root"
}

# logged COMMAND...: runs a command whose output is of interest only if it fails.
logged() {
    local status=0
    run_held "$@" >"$work/log" 2>&1 </dev/null || status=$?
    traps
    # Ended from outside.
    [[ $status -ne 143 && $status -ne 130 ]] || exit "$status"
    if [[ $status -ne 0 ]]; then
        tail -n 40 "$work/log" >&2
        die "failed: $*"
    fi
}

# inside COMMAND...: runs a command in the root, with nothing of this machine's environment.
enter=(env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8
    DEBIAN_FRONTEND=noninteractive chroot "$root")
inside() {
    "${enter[@]}" "$@"
}

inside_logged() {
    logged "${enter[@]}" "$@"
}

# sources: where this machine's apt has Debian from: address, release and component of each.
sources() {
    # shellcheck disable=SC2016  # the words with dollars are apt's
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | grep -E " ${suite}[^ ]* " | sort -u
}

make_base() {
    local mirror proxy
    packages package
    mkdir -p "$(dirname "$base")"
    mirror=$(sources | awk -v suite="$suite" '$2 == suite && $3 == "main" { print $1; exit }')
    [[ -n $mirror ]] || die "this machine's apt knows no $suite; is it a Debian 12, after apt-get update?"
    proxy=$(apt-config dump --format '%v' Acquire::http::Proxy)
    [[ -z $proxy ]] || export http_proxy=$proxy
    say "making an empty system, which takes minutes"
    logged debootstrap --variant=minbase "$suite" "$root" "$mirror"
    rm -f "$root"/var/cache/apt/archives/*.deb
    logged tar -C "$root" --one-file-system --numeric-owner -cf "$base.new" .
    mv "$base.new" "$base"
    remove_root
}

# Unpacks the empty system and gives it Debian's archive where this machine has it.
make_empty_root() {
    remove_root
    [[ -s $base ]] || make_base
    mkdir -p "$root"
    logged tar -C "$root" --numeric-owner -xpf "$base"
    mount -t proc proc "$root/proc"
    cp /etc/resolv.conf /etc/hosts "$root/etc/"

    sources | sed 's/^/deb /' >"$root/etc/apt/sources.list"
    # How this machine's apt reaches them, proxies and all.
    apt-config dump Acquire | grep -v ' "";$' |
        grep -vE '^Acquire::(IndexTargets|cdrom|Changelogs|Languages|CompressionTypes)' >"$root/etc/apt/apt.conf.d/90machine" || true
}
