# Sourced by checks that need a bare Debian: makes one of the suite that this machine runs, from the mirror that its apt
# is configured with. The functions need root, for which be_root stands at the beginning of a script.

# new_chroot FOLDER [PACKAGE...]
new_chroot() {
    local folder=$1 suite mirror
    shift
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Component: main' "Codename: $suite" |
        head -n 1)
    debootstrap --variant=minbase "$suite" "$folder" "$mirror" >"$folder.log" 2>&1 || { tail "$folder.log"; return 1; }
    echo 'APT::Get::Assume-Yes "true"; APT::Install-Recommends "false";' >"$folder/etc/apt/apt.conf.d/50unattended"
    [ $# -eq 0 ] || in_chroot "$folder" apt-get install -qq "$@" >>"$folder.log" 2>&1 || { tail "$folder.log"; return 1; }
}

# in_chroot FOLDER COMMAND...
in_chroot() {
    local folder=$1
    shift
    chroot "$folder" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}

# be_root ARGUMENT...: starts the script anew as root unless it runs so; its name and arguments stay the same.
be_root() {
    [ "$(id -u)" -eq 0 ] || exec sudo "scripts/$(basename "$0")" "$@"
    export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0=$PWD # git distrusts another user's tree
}
