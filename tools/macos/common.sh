# Functions for the scripts of a Mac, for the bash 3.2 that macOS has. Sourced, never run.
# shellcheck shell=bash

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
fetched=$project/build/mac
may_install=yes

say() { printf '%s\n' "$*"; }
stop() { # stop MESSAGE: prints the message and exits with 1
    printf 'tools: %s\n' "$*" >&2
    exit 1
}

# Prints the comment at the top of a script as its help.
help_of() { sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p;}' "$1"; }

fetch() { # fetch NAME ADDRESS TAG: a shallow clone in $fetched/NAME
    [ -d "$fetched/$1/.git" ] && return 0
    [ "$may_install" = yes ] || stop "$fetched/$1 is missing; run without --no-install"
    say "fetching $1 $3"
    mkdir -p "$fetched" && git clone --quiet --depth 1 --branch "$3" "$2" "$fetched/$1.new" </dev/null &&
        mv "$fetched/$1.new" "$fetched/$1" || stop "couldn't fetch $2"
}

install_dependencies() { # with Homebrew, and from their own repositories what it lacks
    xcode-select -p >/dev/null 2>&1 || stop "Xcode 26 is missing; install it from the App Store"
    command -v brew >/dev/null || stop "Homebrew is missing; https://brew.sh says how to install it"
    if [ "$may_install" = yes ] && ! brew bundle check --file "$project/tools/macos/Brewfile" >/dev/null 2>&1; then
        brew bundle install --no-upgrade --file "$project/tools/macos/Brewfile" </dev/null ||
            stop "Homebrew failed (see above)"
    fi
    fetch bootstrap-icons https://github.com/twbs/icons v1.10.3
    fetch qcoro-source https://github.com/danvratil/qcoro v0.11.0
    [ -d "$fetched/qcoro/lib/cmake" ] && return 0
    say "building QCoro"
    cmake -S "$fetched/qcoro-source" -B "$fetched/qcoro-build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DUSE_QT_VERSION=6 \
        -DCMAKE_PREFIX_PATH="$(brew --prefix qt)" -DCMAKE_INSTALL_PREFIX="$fetched/qcoro" -DBUILD_SHARED_LIBS=OFF \
        -DBUILD_TESTING=OFF -DQCORO_BUILD_EXAMPLES=OFF -DQCORO_WITH_QTDBUS=OFF -DQCORO_WITH_QTNETWORK=OFF \
        -DQCORO_WITH_QTWEBSOCKETS=OFF -DQCORO_WITH_QTQUICK=OFF -DQCORO_WITH_QML=OFF -DQCORO_WITH_QTTEST=OFF \
        >"$fetched/qcoro.log" 2>&1 </dev/null &&
        cmake --build "$fetched/qcoro-build" --target install >>"$fetched/qcoro.log" 2>&1 </dev/null ||
        stop "QCoro couldn't be built: see $fetched/qcoro.log"
}

configure() { # configure PRESET
    local prefixes name
    prefixes=$fetched/qcoro
    for name in qt icu4c libarchive openssl@3; do prefixes="$prefixes;$(brew --prefix "$name")"; done
    (cd "$project" && cmake --preset "$1" "-DCMAKE_PREFIX_PATH=$prefixes" \
        "-DTUNEDECK_SYMBOL_FOLDER=$fetched/bootstrap-icons/icons") </dev/null ||
        stop "CMake couldn't configure the preset $1 (see above)"
}

build() { # build PRESET [TARGET]
    (cd "$project" && cmake --build --preset "$1" ${2:+--target "$2"}) </dev/null ||
        stop "the build of the preset $1 failed (see above)"
}
