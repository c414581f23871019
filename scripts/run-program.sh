# Runs a program with the interposer's d3d9.dll. Bash; source it behind environment.sh.

# make_run_folder PROGRAM: sets folder to the program's folder once more, with links to all that is in it, and to the
# libraries that make the run. Wine looks for a program's libraries where the program's link lies.
make_run_folder()
{
    folder=$(mktemp -d "$TESSLO_BUILD/run-XXXXXX")
    find "$(dirname "$1")" -mindepth 1 -maxdepth 1 ! -iname d3d9.dll -exec ln -s -t "$folder" {} +
    ln -sf -t "$folder" "$TESSLO_BIN"/interposer/{d3d9,TessloClientDllRun}.dll
}

# run_interposed PROGRAM OPTION... -- ARGUMENT...: where the caller stands; the report is printed. Answers the code of
# tesslo_run: 0, 1 when something is wrong with the driver or the program crashed, 2 when it could not be started.
run_interposed()
{
    local program=$1 options=() status=0
    shift
    while [[ $1 != -- ]]; do
        options+=("$1")
        shift
    done
    shift
    make_run_folder "$program"
    # Wine takes its own d3d9.dll before one beside the program unless it is told not to.
    WINEDLLOVERRIDES="$WINEDLLOVERRIDES;d3d9=n,b" wine "$TESSLO_BIN/tesslo_run.exe" \
        --driver "Z:$TESSLO_BIN/TessloWddmUmode.dll" "${options[@]}" "Z:$folder/$(basename "$program")" "$@" \
        </dev/null 2>"$TESSLO_LOGS/run-errors.log" 9>&- | tr -d '\r' || status=${PIPESTATUS[0]}
    ((status < 2)) || tr -d '\r' <"$TESSLO_LOGS/run-errors.log" >&2
    remove_run_folder
    return "$status"
}

remove_run_folder()
{
    [[ -z ${folder:-} ]] || rm -rf "$folder"
    folder=""
}
