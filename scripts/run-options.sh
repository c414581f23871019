# The options of ./run, read and checked before anything is built or started. Bash; source it behind environment.sh.

usage()
{
    cat <<'END'
Usage: ./run [OPTION...] PROGRAM.exe [ARGUMENT...]
Runs a 64-bit Direct3D 9 program, draws through the driver what it draws, and tells how many of its frames are equal.

  --frames N        end the program behind N frames; 0: when it ends itself (0)
  --seconds N       end the program after N seconds; 0: when it ends itself (0)
  --source N        the virtual monitor that shows the frames, 0 to 5 (0)
  --mode MODE       compare: each frame, and each read of pixels, with the driver's picture (compare)
                    answer: the same, and the program reads the driver's pixels
                    carry: draw through the driver and compare nothing
                    off: count the frames
  --pictures DIR    keep what differs there: the driver's picture, the platform's, and where they differ
  --json FILE       write the report there, too
  --client DLL      the client library that gets the frames (TessloClientDllSample.dll)
  --live            show the frames in a web browser, at http://127.0.0.1:7600/
  --point           both sides read textures by point: tells a filter's fault from others
  -h, --help        print this and end

The program finds its folder as it is, but what it writes beside itself is gone behind the run.

Examples:
  ./run --frames 300 game.exe -windowed
  ./run --live --seconds 60 game.exe
END
}

refuse()
{
    echo "run: $1; ./run --help tells the options" >&2
    exit 2
}

# is_number TEXT HIGHEST: a whole decimal number up to that one.
is_number()
{
    [[ $1 =~ ^[0-9]{1,9}$ ]] && ((10#$1 <= $2))
}

# read_value OPTION VALUE: one option that has a value.
read_value()
{
    case $1 in
        --frames | --seconds)
            is_number "$2" 1000000 || refuse "$1 $2: expected 0 to 1000000"
            options+=("$1" "$((10#$2))")
            ;;
        --source)
            is_number "$2" 5 || refuse "--source $2: expected 0 to 5"
            options+=("$1" "$((10#$2))")
            ;;
        --mode)
            [[ $2 == compare || $2 == answer || $2 == carry || $2 == off ]] ||
                refuse "--mode $2: expected compare, answer, carry or off"
            options+=("$1" "$2")
            ;;
        --pictures)
            [[ -n $2 && (! -e $2 || -d $2) ]] || refuse "--pictures $2: not a folder"
            pictures=$(realpath -m -- "$2")
            options+=("$1" "Z:$pictures")
            ;;
        --json)
            [[ -d $(dirname -- "$2") ]] || refuse "--json $2: there is no such folder"
            options+=("$1" "Z:$(realpath -m -- "$2")")
            ;;
        --client)
            [[ -f $2 ]] || refuse "--client $2: no such file"
            client=$(realpath -- "$2")
            ;;
    esac
}

# check_program FILE: refuses what is no 64-bit Windows program, or draws with something else.
check_program()
{
    local header machine
    [[ -f $1 ]] || refuse "$1: no such file"
    [[ $(head -c 2 -- "$1") == MZ ]] || refuse "$1: not a Windows program"
    header=$(od -An -tu4 -j60 -N4 -- "$1")
    machine=$(od -An -tx2 -j$((header + 4)) -N2 -- "$1" 2>/dev/null | tr -d ' ')
    [[ $machine != 014c ]] || refuse "$1: a 32-bit program; the driver is one of 64 bits"
    [[ $machine == 8664 ]] || refuse "$1: not a 64-bit Windows program"
    uses_direct3d9 "$1" || refuse "$1: neither it nor a library beside it uses Direct3D 9"
}

# Whether the program, or a library beside it, names the platform's library in either kind of text.
uses_direct3d9()
{
    local folder
    folder=$(dirname -- "$1")
    find "$1" "$folder" -maxdepth 1 \( -path "$1" -o -iname '*.dll' ! -iname 'd3d9.dll' \) -type f,l -print0 |
        xargs -0 grep -qiaP 'd\x00?3\x00?d\x00?9\x00?\.\x00?d\x00?l\x00?l'
}

# Sets program, arguments, options, client, pictures and live. Ends here with --help and with a wrong option.
read_options()
{
    options=() client="" pictures="" live=0
    while (($# > 0)); do
        case $1 in
            -h | --help)
                usage
                exit 0
                ;;
            --frames | --seconds | --source | --mode | --pictures | --json | --client)
                (($# > 1)) || refuse "$1 lacks its value"
                read_value "$1" "$2"
                shift
                ;;
            --frames=* | --seconds=* | --source=* | --mode=* | --pictures=* | --json=* | --client=*)
                read_value "${1%%=*}" "${1#*=}"
                ;;
            --live) live=1 ;;
            --point) options+=("$1") ;;
            -*) refuse "unknown option: $1" ;;
            *) break ;;
        esac
        shift
    done
    (($# > 0)) || refuse "no program is named"
    ((live == 0)) || [[ -z $client ]] || refuse "--live and --client name two client libraries"
    check_program "$1"
    program=$(realpath -s -- "$1")
    shift
    arguments=("$@")
}
