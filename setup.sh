#!/usr/bin/env bash
# Installs what the build, the tests and a headless run need and this machine does not have yet.
# Sourced by ./run, ./test, ./check and ./bench, which may name further packages:
# setup_packages NAME...

setup_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "Installing: ${missing[*]}" >&2
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq >&2 &&
        DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq \
            --no-install-recommends "${missing[@]}" >&2
}

setup_build() {
    setup_packages g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl-dev libxcb1-dev libtbb-dev \
        libasio-dev libssl-dev openssl libmosquitto-dev mosquitto libcli11-dev \
        nlohmann-json3-dev libgtest-dev python3 fonts-liberation
}

# build PRESET TARGET [CMAKE-ARGUMENT...]: configures with a preset and builds a target and what it
# needs; quiet unless it fails. The target "all" is everything.
build() {
    local preset=$1 target=$2 log
    shift 2
    log=$(mktemp)
    if ! { cmake --preset "$preset" "$@" &&
        cmake --build --preset "$preset" --target "$target"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

# run_tests PRESET [CTEST-ARGUMENT...]: the tests of a build, as many at a time as there are
# processors; offscreen unless the caller names another platform.
run_tests() {
    local preset=$1
    shift
    QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} ctest --test-dir "build/$preset" \
        --parallel "$(nproc)" --output-on-failure --no-tests=error "$@"
}
