# Sourced, after setup.sh, by checks that need a bare Debian: makes one of the suite that this machine runs, from the mirror
# that its apt is configured with. What makes and uses it runs as root; nothing else of a check does.

# new_chroot FOLDER [PACKAGE...]
new_chroot() {
    local folder=$1 suite mirror
    shift
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Component: main' "Codename: $suite" |
        head -n 1)
    quiet "${as_root[@]}" debootstrap --variant=minbase "$suite" "$folder" "$mirror" || return 1
    echo 'APT::Get::Assume-Yes "true"; APT::Install-Recommends "false";' |
        "${as_root[@]}" tee "$folder/etc/apt/apt.conf.d/50unattended" >/dev/null || return 1
    [ $# -eq 0 ] || quiet in_chroot "$folder" apt-get install -qq "$@"
}

# in_chroot FOLDER COMMAND...
in_chroot() {
    local folder=$1
    shift
    "${as_root[@]}" chroot "$folder" env -i HOME=/root PATH=/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}
