# Sourced by the other scripts: changes to the root of the tree and defines the functions that they share.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export TZ=Asia/Kathmandu # dates are written in local time: a zone far from UTC shows a mistake
jobs=$(nproc)
as_root=() # what stands before a command that only root may run
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

build_packages=(build-essential cmake ninja-build libxerces-c-dev libcli11-dev nlohmann-json3-dev libgtest-dev
    librapidcheck-dev libxml2-utils locales mandoc tzdata)
bench_packages=(libbenchmark-dev libxml2-dev libexpat1-dev libpugixml-dev valgrind)
arm64_packages=(g++-aarch64-linux-gnu libxerces-c-dev:arm64 libgtest-dev:arm64 librapidcheck-dev:arm64 qemu-user)
python_packages=(pybind11-dev python3-dev python3-pandas)
check_packages=(git clang clang-format clang-tidy doxygen fish jq libclang-rt-dev python3 python3-pandas sqlite3 valgrind
    zsh)

# Installs those of the named Debian packages that are missing, PACKAGE or PACKAGE:ARCHITECTURE. When none is missing, no
# network is needed.
need_packages() {
    local package architecture missing=()
    for package in "$@"; do
        architecture=$(dpkg --print-architecture)
        [[ $package != *:* ]] || architecture=${package#*:}
        if ! dpkg-query -W -f '${Architecture} ${db:Status-Status}\n' "$package" 2>/dev/null |
            grep -qxE "(all|$architecture) installed"; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -qq -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Installs what builds for arm64 on a machine of another kind.
need_arm64() {
    dpkg --print-foreign-architectures | grep -qx arm64 || "${as_root[@]}" dpkg --add-architecture arm64 || return 1
    need_packages "${arm64_packages[@]}"
}

# build PRESET TARGET [cmake argument...]: configures build/PRESET and builds the target there.
build() {
    local preset=$1 target=$2
    shift 2
    cmake --preset "$preset" "$@" && cmake --build --preset "$preset" --target "$target" --parallel "$jobs"
}

# quiet COMMAND...: runs a command, and shows the end of what it writes only if it fails.
quiet() {
    local said
    said=$("$@" 2>&1) || { tail -n 30 <<<"$said" >&2; return 1; }
}

# The paths of the headers that are installed.
public_headers() {
    sed -n '/^set(zeb5_public_headers/,/)$/s/^ *\([^ ]*\.hp*\))*$/\1/p' cmake/headers.cmake
}

# The harnesses of fuzzing.
fuzz_harnesses() { sed -n 's/^set(harnesses \(.*\))$/\1/p' fuzz/CMakeLists.txt | tr ' ' '\n' | grep .; }

# step NAME COMMAND...: runs a command under its name and tells how long it took; a failure ends the script. A function
# ends at its first command that fails, which it would not as the condition of an `if`: bash ignores -e there.
step() {
    local name=$1 begin=$SECONDS status
    shift
    echo
    echo "== $name"
    set +e
    (set -e; "$@")
    status=$?
    set -e
    if [ $status -ne 0 ]; then
        echo "FAILED: $name" >&2
        exit 1
    fi
    echo "== $name: ok, $((SECONDS - begin)) s"
}

# figure NAME: prints the figure that a deep check wrote to build/deep/figures as "NAME VALUE"; 0 without one.
figure() {
    local value
    value=$(sed -n "s/^$1 //p" build/deep/figures 2>/dev/null) || true
    echo "${value:-0}"
}

# set_figure NAME VALUE: writes a figure; it replaces an earlier one of that name.
set_figure() {
    mkdir -p build/deep
    touch build/deep/figures
    sed -i "/^$1 /d" build/deep/figures
    echo "$1 $2" >>build/deep/figures
}

# add_figure NAME NUMBER: adds to a figure.
add_figure() { set_figure "$1" $(($(figure "$1") + $2)); }
