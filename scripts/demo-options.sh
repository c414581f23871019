# The options of ./demo, read and checked before anything is built, started or deleted. Bash; source it behind
# environment.sh. What is wrong with a value is told in the words of the host program, which checks it once more.

# What ./demo shows when its user names no sources of their own: a size, a rotation and a scene each.
DEMO_SIZES=(1280x720 800x600 640x480)
DEMO_ROTATIONS=(180 90 0)
DEMO_SCENES=(turning card video)
DEMO_FRAMES=30
DEMO_LIVE_FPS=30

usage()
{
    cat <<END
Usage: ./demo [OPTION...]
Renders on virtual monitors, presents through the driver, and shows what reached the client library.
Without options: ${DEMO_FRAMES} frames for each of three sources,
$(describe_sources)

What is shown; each of the three may be given once for each source:
  --source WxH        a virtual monitor's size, 64 to 8192 each, six monitors at most; yours replace the three above
  --rotation DEGREES  of the source in the same place: 0, 90, 180 or 270 (0 with sources of your own)
  --scene NAME        of the source in the same place: turning, fill, video or card, a test card (turning with sources
                      of your own)

How, and where to:
  --live              in a web browser, until Ctrl-C, $DEMO_LIVE_FPS frames a second; no picture of each frame
  --frames N          frames for each source ($DEMO_FRAMES); 0: until Ctrl-C, and no picture of each frame
  --fps N             frames a second of each source; 0: as fast as it goes (0)
  --change-every N    change rotation and mode of a source, each in its turn, every N frames; 0: never (0)
  --no-every-frame    do not wait until the client library has a frame: newer ones replace those that it is too slow for
  --out FOLDER        where the pictures and trace.log go (out beside this script); seen from where you stand
  --client DLL        the client library, up to 127 characters (TessloClientDllSample.dll, which records the pictures)
  --driver DLL        the driver (TessloWddmUmode.dll, as built)
  --trace MASK        the driver's trace mask, for example 0x1 or 255 (0x1); lines go to trace.log
  -h, --help          print this and end

Examples:
  ./demo --live
  ./demo --frames 300
  ./demo --source 1920x1080
  ./demo --source 1920x1080 --rotation 90 --source 640x480 --rotation 0 --scene turning --scene video
  ./demo --rotation 270 --out ~/pictures
  ./demo --frames 0 --fps 30 --change-every 90
END
}

describe_sources()
{
    local i
    for i in "${!DEMO_SIZES[@]}"; do
        echo "  ${DEMO_SIZES[i]}, turned by ${DEMO_ROTATIONS[i]} degrees: ${DEMO_SCENES[i]}"
    done
}

refuse()
{
    echo "demo: $1; ./demo --help tells the options" >&2
    exit 2
}

# is_number TEXT LOWEST HIGHEST: a whole decimal number in that range. Not more digits than Bash can count with.
is_number()
{
    [[ $1 =~ ^[0-9]{1,18}$ ]] && ((10#$1 >= $2 && 10#$1 <= $3))
}

check_size()
{
    [[ $1 =~ ^([0-9]+)x([0-9]+)$ ]] && is_number "${BASH_REMATCH[1]}" 64 8192 && is_number "${1#*x}" 64 8192 ||
        refuse "--source $1: expected WIDTHxHEIGHT, each 64 to 8192 pixels"
}

check_rotation()
{
    [[ $1 == 0 || $1 == 90 || $1 == 180 || $1 == 270 ]] || refuse "--rotation $1: expected 0, 90, 180 or 270"
}

check_scene()
{
    [[ $1 == turning || $1 == fill || $1 == video || $1 == card ]] ||
        refuse "--scene $1: expected turning, fill, video or card"
}

# check_count OPTION VALUE HIGHEST
check_count()
{
    is_number "$2" 0 "$3" || refuse "$1 $2: expected 0 to $3"
}

check_trace()
{
    is_number "$1" 0 4294967295 || [[ $1 =~ ^0[xX]0*[0-9a-fA-F]{1,8}$ ]] ||
        refuse "--trace $1: expected a bit mask, for example 0x1 or 255"
}

# check_library OPTION NAME: sets library to the name as Wine knows it. A file that is there is meant; any other name is
# left for the system to look up, but not one with a folder in it.
check_library()
{
    library=$2
    if [[ -f $2 ]]; then
        library=Z:$(realpath "$2")
    elif [[ -z $2 || $2 == */* ]]; then
        refuse "$1 $2: no such file"
    fi
    ((${#library} <= 127)) || [[ $1 != --client ]] ||
        refuse "$1 $2: the path has more than 127 characters: the driver would not read it"
}

check_output()
{
    [[ -n $1 ]] || refuse "--out: the folder's name is empty"
    [[ ! -e $1 || -d $1 ]] || refuse "--out $1: not a folder"
}

# read_value OPTION VALUE: one option that has a value.
read_value()
{
    case $1 in
        --source)
            check_size "$2"
            sizes+=("$2")
            ;;
        --rotation)
            check_rotation "$2"
            rotations+=("$2")
            ;;
        --scene)
            check_scene "$2"
            scenes+=("$2")
            ;;
        --frames)
            check_count "$1" "$2" 1000000
            frames=$((10#$2))
            ;;
        --fps)
            check_count "$1" "$2" 1000
            fps=$2
            ;;
        --change-every)
            check_count "$1" "$2" 1000000
            change_every=$2
            ;;
        --out)
            check_output "$2"
            out=$(realpath -m -- "$2")
            ;;
        --trace)
            check_trace "$2"
            trace=$2
            ;;
        --client)
            check_library "$1" "$2"
            client=$library
            ;;
        --driver)
            check_library "$1" "$2"
            driver=$library
            ;;
    esac
}

# Sets sizes, rotations and scenes, one of each a source, and a variable for each other option. Ends here with --help
# and with a wrong option.
read_options()
{
    sizes=() rotations=() scenes=()
    live=0 frames="" fps="" change_every=0 every_frame=""
    out=$TESSLO_ROOT/out trace=0x1 client="" driver=""
    local library
    while (($# > 0)); do
        case $1 in
            -h | --help)
                usage
                exit 0
                ;;
            --source | --rotation | --scene | --frames | --fps | --change-every | --out | --trace | --client | --driver)
                (($# > 1)) || refuse "$1 lacks its value"
                read_value "$1" "$2"
                shift
                ;;
            --live)
                live=1
                ;;
            --every-frame | --no-every-frame)
                every_frame=$([[ $1 == --no-* ]] && echo 0 || echo 1)
                ;;
            --source=* | --rotation=* | --scene=* | --frames=* | --fps=* | --change-every=* | --out=* | --trace=* | \
                --client=* | --driver=*)
                read_value "${1%%=*}" "${1#*=}"
                ;;
            *)
                refuse "unknown option: $1"
                ;;
        esac
        shift
    done
    ((live == 0)) || go_live
    : "${frames:=$DEMO_FRAMES}" "${fps:=0}" "${every_frame:=1}"
    pair_sources
}

# The browser's client library takes the place of the one that records. A viewer sees the newest frame: none waits.
go_live()
{
    [[ -z $client ]] || refuse "--live brings a client library of its own: leave --client out"
    client=TessloClientDllBrowser.dll
    read_page_settings
    : "${frames:=0}" "${fps:=$DEMO_LIVE_FPS}" "${every_frame:=0}"
}

# Fills up what the user has not given for a source.
pair_sources()
{
    local i own=${#sizes[@]}
    ((own > 0)) || sizes=("${DEMO_SIZES[@]}")
    ((${#sizes[@]} <= 6)) || refuse "more than 6 sources"
    ((${#rotations[@]} <= ${#sizes[@]})) || refuse "more --rotation than --source"
    ((${#scenes[@]} <= ${#sizes[@]})) || refuse "more --scene than --source"
    for i in "${!sizes[@]}"; do
        if ((own > 0)); then
            : "${rotations[i]:=0}" "${scenes[i]:=turning}"
        else
            : "${rotations[i]:=${DEMO_ROTATIONS[i]}}" "${scenes[i]:=${DEMO_SCENES[i]}}"
        fi
    done
}
