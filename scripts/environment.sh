# What ./test, ./demo, ./bench, ./stress and scripts/measure-coverage share: packages, a display, a Wine prefix of our
# own. Bash; source it from a script that has set `set -euo pipefail`. Everything that it starts or creates lies in
# build/ and ends with the script.

TESSLO_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
TESSLO_BUILD=$TESSLO_ROOT/build
TESSLO_LOGS=$TESSLO_BUILD/logs
TESSLO_PRESET=release
TESSLO_BIN=$TESSLO_BUILD/$TESSLO_PRESET/bin

# say TEXT: one line of progress, with the seconds since the script began.
say()
{
    printf '[%4d s] %s\n' "$SECONDS" "$*"
}

die()
{
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# run_logged NAME COMMAND...: runs the command with its output in build/logs/NAME.log; tells every 10 s that it still
# runs, and what it printed last; on failure shows the end of the log.
run_logged()
{
    local name=$1 log=$TESSLO_LOGS/$1.log result=0 waited=0
    shift
    "$@" </dev/null >"$log" 2>&1 9>&- &
    local pid=$!
    while kill -0 "$pid" 2>/dev/null; do
        sleep 0.2
        waited=$((waited + 1))
        if ((waited % 50 == 0)); then
            say "  $name: $(tail -n 1 "$log" | tr -d '\r' | cut -c 1-90)"
        fi
    done
    wait "$pid" || result=$?
    if ((result != 0)); then
        tail -n 40 "$log" >&2
        die "$name failed with code $result; the whole log is $log"
    fi
}

as_root()
{
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "packages are missing and neither root nor sudo is at hand: $*"
    fi
}

# Names in the given lists of scripts/ that are not installed, one a line.
missing_packages()
{
    local package
    (cd "$TESSLO_ROOT/scripts" && cat "$@") | while read -r package; do
        [[ -z $package || $package == \#* ]] && continue
        if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            echo "$package"
        fi
    done
}

# install_packages LIST...: what the lists of scripts/ name and this machine lacks.
install_packages()
{
    local missing
    missing=$(missing_packages "$@")
    [[ -z $missing ]] && return
    say "installing packages:" $missing
    # The password is asked here, where the terminal still is.
    as_root true
    run_logged apt-update as_root apt-get -q update
    # shellcheck disable=SC2086 # one word a package
    run_logged apt-install as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y --no-install-recommends -o DPkg::Lock::Timeout=300 install $missing
}

# One run at a time owns build/: the server and the display below are stopped at its end.
lock_build()
{
    mkdir -p "$TESSLO_LOGS"
    exec 9>"$TESSLO_BUILD/.lock"
    if ! flock -n 9; then
        say "another run is using build/; waiting for it"
        flock 9
    fi
}

configure()
{
    say "configuring ($TESSLO_PRESET)"
    cd "$TESSLO_ROOT"
    run_logged configure cmake --preset "$TESSLO_PRESET"
}

build_all()
{
    configure
    say "building"
    run_logged build cmake --build --preset "$TESSLO_PRESET"
}

# build_target TARGET...: these and what they need, no test. A tree that is configured configures itself anew when it
# has to, and stays with tests or without; a new one is for a first look and precompiles the platform's headers.
build_target()
{
    cd "$TESSLO_ROOT"
    if [[ ! -s $TESSLO_BUILD/$TESSLO_PRESET/build.ninja ]]; then
        say "configuring ($TESSLO_PRESET)"
        run_logged configure cmake --preset "$TESSLO_PRESET" -DTESSLO_BUILD_TESTS=OFF -DTESSLO_PRECOMPILE=ON
    fi
    say "building"
    run_logged build cmake --build --preset "$TESSLO_PRESET" --target "$@"
}

# build_shipped TARGET...: as build_target, but nothing is precompiled, also where a first look has configured the tree:
# precompiled headers show in the PDBs, and by their hashes in the images.
build_shipped()
{
    cd "$TESSLO_ROOT"
    say "configuring ($TESSLO_PRESET)"
    if [[ -s $TESSLO_BUILD/$TESSLO_PRESET/build.ninja ]]; then
        run_logged configure cmake -DTESSLO_PRECOMPILE=OFF "$TESSLO_BUILD/$TESSLO_PRESET"
    else
        run_logged configure cmake --preset "$TESSLO_PRESET" -DTESSLO_BUILD_TESTS=OFF -DTESSLO_PRECOMPILE=OFF
    fi
    say "building"
    run_logged build cmake --build --preset "$TESSLO_PRESET" --target "$@"
}

# What needs no Windows, for this machine and under the sanitizers: ./test alone asks for it.
build_native()
{
    say "building (native)"
    cd "$TESSLO_ROOT"
    run_logged configure-native cmake --preset native
    run_logged build-native cmake --build --preset native
}

stop_environment()
{
    # Never the server of a prefix that whoever calls us works with.
    if [[ ${WINEPREFIX:-} == "$TESSLO_BUILD/wine" ]]; then
        wineserver -k </dev/null >/dev/null 2>&1 || true
    fi
    if [[ -n ${TESSLO_XVFB:-} ]]; then
        kill "$TESSLO_XVFB" 2>/dev/null || true
    fi
}

# die_with_log NAME TEXT: shows the end of build/logs/NAME.log, then dies with the text.
die_with_log()
{
    local log=$TESSLO_LOGS/$1.log
    if [[ -s $log ]]; then
        echo "the last lines of $log:"
        tail -n 10 "$log"
    else
        echo "$log is empty: it said nothing"
    fi >&2
    die "$2"
}

start_display()
{
    local number=$TESSLO_BUILD/.display tries=0
    : >"$number"
    # Xvfb takes the first free number and writes it down. Out of the terminal's reach: Ctrl-C would end it before those
    # that draw on it.
    setsid Xvfb -displayfd 8 -screen 0 1280x1024x24 -nolisten tcp 8>"$number" </dev/null >"$TESSLO_LOGS/xvfb.log" 2>&1 9>&- &
    TESSLO_XVFB=$!
    until [[ -s $number ]]; do
        ((++tries <= 300)) && kill -0 "$TESSLO_XVFB" 2>/dev/null ||
            die_with_log xvfb "the virtual X server did not start"
        sleep 0.1
    done
    DISPLAY=:$(<"$number")
    export DISPLAY
}

# The server and the boot get no pipe on any stream: a persistent server keeps what it inherits open, and whoever reads
# the other end would never see its end. Files may stay open.
start_wine()
{
    local log=$TESSLO_LOGS/wine.log
    say "starting Wine"
    export WINEPREFIX=$TESSLO_BUILD/wine
    export WINEDEBUG=-all
    # Without its debugger a crashed program ends with its exception code, never with 0.
    export WINEDLLOVERRIDES='winedbg.exe=d;mscoree=d;mshtml=d'
    # The command stream thread spins; one thread gives the same pictures and leaves the cores to the work.
    export WINE_D3D_CONFIG=csmt=0
    # One heap for all threads: of a thread's own the C library gives back what the rasteriser frees behind each frame,
    # and the next frame waits for every page of it again.
    export MALLOC_ARENA_MAX=1
    # Nobody types: X11's library would read the file of a keyboard's combinations, character by character, for each
    # thread that makes a window. That took most of a device's start.
    export XCOMPOSEFILE=/dev/null
    mkdir -p "$WINEPREFIX"
    # What a run that was killed has left behind knows another display.
    wineserver -k </dev/null >/dev/null 2>&1 9>&- || true
    wineserver -w </dev/null >/dev/null 2>&1 9>&- || true
    wineserver -p </dev/null >"$log" 2>&1 9>&- || die_with_log wine "Wine's server did not start in $WINEPREFIX"
    # Makes the prefix, or brings it up to date after another Wine was installed; else it only starts the services. What
    # it complains about is worth reading only when it fails.
    WINEDEBUG=fixme-all wine wineboot -i </dev/null >>"$log" 2>&1 9>&- ||
        die_with_log wine "Wine did not start in $WINEPREFIX"
}

# prepare_environment LIST...: build/ is ours and the packages of the lists are there.
prepare_environment()
{
    lock_build
    trap stop_environment EXIT
    trap 'exit 130' INT TERM
    install_packages "$@"
}

# Behind the build: a display and a running Wine.
start_environment()
{
    start_display
    start_wine
}
