# Sourced by ./run and ./test. Installs what is missing, configures and builds; prints what it does. They set
# `program`, their name, and `preset`, what CMake is to build.

fail() {
    echo "$program: $*" >&2
    exit 1
}

build=build/$preset
packages="g++ cmake ninja-build qt6-base-dev qt6-webengine-dev libhunspell-dev libbenchmark-dev fonts-dejavu-core fonts-liberation"

install_packages() {
    if ! command -v dpkg-query >/dev/null 2>&1; then
        echo "$program: no Debian packages here; needed are: $packages"
        return
    fi
    missing=
    for package in $packages; do
        state=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
        [ "$state" = "install ok installed" ] || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "$program: installing$missing"
    sudo=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 || fail "run as root or install sudo; missing packages:$missing"
        sudo=sudo
    fi
    log=$(mktemp)
    if ! { $sudo apt-get update && DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends \
        $missing; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        fail "the packages could not be installed"
    fi
    rm -f "$log"
}

build_program() {
    if [ ! -f "$build/build.ninja" ]; then
        echo "$program: configuring $build"
        mkdir -p build
        if ! cmake --preset "$preset" >build/configure.log 2>&1; then
            tail -n 30 build/configure.log >&2
            fail "configuring failed"
        fi
    fi
    echo "$program: building $*"
    cmake --build "$build" --target "$@" || fail "building failed"
}

# Chromium refuses to run as root with its sandbox; containers and build machines are root.
allow_root() {
    [ "$(id -u)" -ne 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1
}
