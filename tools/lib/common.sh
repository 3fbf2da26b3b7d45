# Functions for the scripts in tools/: messages, package installation, configuring and building. Sourced, never run.
# shellcheck shell=bash

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
may_install=yes

say() { printf '%s\n' "$*"; }
stop() { # stop MESSAGE: prints the message and exits with 1
    printf 'tools: %s\n' "$*" >&2
    exit 1
}

# Prints the comment at the top of a script as its help.
help_of() { sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$1"; }

packages_of() { # packages_of GROUP…: prints the packages in these groups of packages.txt
    awk -v wanted=" $* " '
        /^\[/ { group = substr($0, 2, length($0) - 2); next }
        NF && !/^#/ && index(wanted, " " group " ") && !seen[$1]++ { print $1 }' "$project/tools/packages.txt"
}

missing_packages() { # missing_packages PACKAGE…: prints those that aren't installed
    local -A have=()
    local state package
    while read -r state package; do
        [ "$state" != installed ] || have[$package]=yes
    done < <(LC_ALL=C dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null)
    for package in "$@"; do [ -n "${have[$package]-}" ] || echo "$package"; done
}

# Runs apt-get as root and appends its output to $apt_log.
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -q -y -o DPkg::Lock::Timeout=300 \
        -o Acquire::Retries=2 "$@" >>"$apt_log" 2>&1 </dev/null
}

explain_apt_failure() { # prints the reason for the failure and exits
    grep -E '^(E|W|dpkg)[: ]' "$apt_log" | tail -n 5 | sed 's/^/    /' >&2
    if grep -qE 'No space left|enough free space' "$apt_log"; then
        stop "the disk is full: apt-get couldn't store the packages (full output: $apt_log)"
    elif grep -qE 'Could not resolve|Temporary failure|Failed to fetch|Could not connect|Unable to connect' "$apt_log"; then
        stop "no network: apt-get couldn't reach the package server (full output: $apt_log)"
    elif grep -qE 'Unable to locate|no installation candidate' "$apt_log"; then
        stop "a package isn't available on this system; the project builds on Debian 12 (full output: $apt_log)"
    elif grep -q 'Could not get lock' "$apt_log"; then
        stop "another program is installing packages; try again when it has finished (full output: $apt_log)"
    fi
    stop "apt-get failed (full output: $apt_log)"
}

install_packages() { # install_packages GROUP…: installs the missing packages of these groups and prints their names
    local wanted missing package as_root=() apt_log
    mapfile -t wanted < <(packages_of "$@")
    [ "$may_install" = yes ] || return 0
    { command -v dpkg-query && command -v apt-get; } >/dev/null ||
        stop "this isn't a Debian system (apt-get is missing); install the packages in tools/packages.txt and pass --no-install"
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    [ "${#missing[@]}" -gt 0 ] || return 0
    if [ "$EUID" -ne 0 ]; then
        command -v sudo >/dev/null ||
            stop "packages are missing and sudo isn't installed. Run as root: apt-get install ${missing[*]}"
        # Without a terminal sudo can't ask for a password.
        if [ -t 0 ]; then as_root=(sudo); else as_root=(sudo -n); fi
        "${as_root[@]}" true 2>/dev/null || stop "packages are missing and sudo failed. Run as root: apt-get install ${missing[*]}"
    fi
    apt_log=$(mktemp "${TMPDIR:-/tmp}/tunedeck-apt.XXXXXX") || stop "couldn't create a file in ${TMPDIR:-/tmp}; is the disk full?"
    say "updating the package lists"
    apt update # ignore failures: one of several servers may be down, and the installation reports missing packages
    for package in "${missing[@]}"; do say "installing $package"; done
    apt install --no-install-recommends "${missing[@]}" || explain_apt_failure
    rm -f "$apt_log"
}

# Share the compiler cache between several checkouts of the project.
export CCACHE_BASEDIR=$project CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime

configure() { # configure PRESET: prints nothing when nothing changed
    local preset=$1 folder=$project/build/$1 log=$project/build/configure-$1.log
    mkdir -p "$folder" || stop "couldn't create the folder $folder"
    if [ -f "$folder/build.ninja" ] && cmp -s "$project/CMakePresets.json" "$folder/configured-with.json"; then
        # Reconfigures if a CMake file has changed or a source file was added or removed.
        ninja -C "$folder" --quiet build.ninja >"$log" 2>&1 </dev/null && return 0
    fi
    say "configuring $preset"
    (cd "$project" && cmake --preset "$preset") >"$log" 2>&1 </dev/null ||
        { cat "$log" >&2; stop "CMake couldn't configure the preset $preset (see above)"; }
    cp "$project/CMakePresets.json" "$folder/configured-with.json"
}

# Measured times of a full build on two cores without a compiler cache.
usual_build_time() { # usual_build_time PRESET TARGET…
    case "$*" in
    *bundle*) echo "3 minutes" ;;
    asan | coverage) echo "15 minutes" ;;
    *) echo "8 minutes" ;;
    esac
}

build() { # build PRESET [TARGET…]: builds all targets by default; shows progress, and compiler output on failure
    local preset=$1 args=() target log=$project/build/build-$1.log process seconds=0 status
    for target in "${@:2}"; do args+=(--target "$target"); done
    if [ "$(ninja -C "$project/build/$preset" -n "${@:2}" 2>/dev/null | grep -c '^\[')" -gt 50 ]; then
        say "building $preset${2:+ (${*:2})}: takes about $(usual_build_time "$@") on two cores, less with a compiler cache"
    else
        say "building $preset${2:+ (${*:2})}"
    fi
    if [ -t 1 ]; then
        (cd "$project" && cmake --build --preset "$preset" -j "$(nproc)" "${args[@]}") </dev/null
        status=$?
    else
        (cd "$project" && exec cmake --build --preset "$preset" -j "$(nproc)" "${args[@]}") >"$log" 2>&1 </dev/null &
        process=$!
        while kill -0 "$process" 2>/dev/null; do
            sleep 1
            ((++seconds % 30)) || say "    $(grep -o '^\[[0-9]*/[0-9]*\]' "$log" | tail -n 1) after $seconds s"
        done
        wait "$process"
        status=$?
        [ "$status" -eq 0 ] || grep -vE '^\[[0-9]+/[0-9]+\]' "$log" >&2
    fi
    [ "$status" -eq 0 ] || {
        local free
        free=$(df --output=avail -k "$project/build" | tail -n 1)
        [ "$free" -gt 51200 ] || stop "the disk is full: $((free / 1024)) MiB left for $project/build"
        stop "the build of the preset $preset failed (see above)"
    }
}

own_files() { # own_files EXTENSION…: prints the project's files with these extensions, including untracked ones
    local patterns=() extension
    for extension in "$@"; do patterns+=("*.$extension"); done
    git -C "$project" ls-files --cached --others --exclude-standard -- "${patterns[@]}" | while read -r name; do
        [ ! -f "$project/$name" ] || echo "$name"
    done
}
