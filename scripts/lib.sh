# shellcheck shell=bash
# What the project's scripts share. To be sourced, after "set -euo pipefail".

ledora_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# say TEXT...: one line about what is going on, away from standard output, which belongs to results.
say() {
    printf '%s\n' "$*" >&2
}

# die TEXT...: says what is wrong and ends the script with status 1.
die() {
    say "$(basename "$0"): $*"
    exit 1
}

# wait_until SECONDS COMMAND...: runs the command until it succeeds; fails once the time is up.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

# process_alive PID
process_alive() {
    kill -0 "$1" 2>/dev/null
}

# process_gone PID
process_gone() {
    ! process_alive "$1"
}

# end_process PID [SECONDS]: asks one process of ours to end, waits that long (5 by default), and only
# then forces it. No effect without a pid or on a process that has gone.
end_process() {
    local pid=${1:-} patience=${2:-5}
    [[ -n $pid ]] || return 0
    kill -TERM "$pid" 2>/dev/null || return 0
    wait_until "$patience" process_gone "$pid" || kill -KILL "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}

# run_held COMMAND...: runs a command as a child that a TERM, INT or HUP of this script ends first, so
# that the caller's EXIT trap finds nothing of it left. Status: the command's.
run_held() {
    local child status=0 stop=
    "$@" <&0 &
    child=$!
    # The single quotes matter: the child is read when the signal comes.
    trap 'stop=143; end_process "$child" 10' TERM HUP
    trap 'stop=130; end_process "$child" 10' INT
    while true; do
        status=0
        wait "$child" || status=$?
        # A trapped signal ends the wait early; the child's own status is had by the next wait.
        process_alive "$child" || break
    done
    trap - TERM HUP INT
    return "${stop:-$status}"
}

# packages GROUP...: installs what is missing, silent where nothing is.
packages() {
    "$ledora_root/scripts/install-packages" "$@" >&2
}

# configure PRESET [CMAKE ARGS...]: sets the build folder up; what CMake says is shown on failure only.
configure() {
    local preset=$1 folder=$ledora_root/build/$1
    shift
    mkdir -p "$folder"
    # Read by CMake at the first configuration only, and only if nobody has chosen otherwise.
    if [[ -z ${CMAKE_CXX_COMPILER_LAUNCHER:-} ]] && command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    if ! (cd "$ledora_root" && cmake --preset "$preset" "$@") >"$folder/configure.log" 2>&1; then
        cat "$folder/configure.log" >&2
        die "the preset '$preset' could not be configured"
    fi
    touch "$folder/.configured"
}

# build PRESET [TARGET...]: builds with all cores, everything if no target is named. Configures if that
# has not been done yet or the presets have changed since; all else Ninja notices by itself.
build() {
    local preset=$1 folder=$ledora_root/build/$1
    shift
    mkdir -p "$folder"
    # Two builds in one folder at once would spoil each other.
    exec {build_lock}>"$folder/.lock"
    flock -n "$build_lock" || { say "waiting for another build of '$preset'"; flock "$build_lock"; }
    if [[ ! -e $folder/build.ninja || ! -e $folder/.configured ||
        $ledora_root/CMakePresets.json -nt $folder/.configured ]]; then
        configure "$preset"
    fi
    say "building $preset"
    (cd "$ledora_root" && cmake --build --preset "$preset" ${1:+--target "$@"} -- -j "$(nproc)" --quiet 2>&1) |
        { grep -vxF 'ninja: no work to do.' || true; } >&2 || die "the build of '$preset' failed"
    exec {build_lock}>&-
}

# built PRESET PROGRAM: path of a program the preset builds.
built() {
    printf '%s\n' "$ledora_root/build/$1/bin/$2"
}

# thread_tests: the tests of the progress framework under the thread sanitizer. Nothing else here has threads.
thread_tests() {
    build tsan progress_tests
    (cd "$ledora_root" && ctest --preset tsan --parallel "$(nproc)" --label-regex '^progress$' --no-tests=error \
        </dev/null)
}
