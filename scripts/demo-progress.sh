# Shows the progress of ./demo. Bash; source it.

# What the host program says, line by line. Lines of progress (" 40 %: ...", or "600 frames" where there is no end)
# become one line on a terminal that is written over; in a file or a pipe they stay what they are.
show_progress()
{
    local line open=0 columns
    while IFS= read -r line || [[ -n $line ]]; do
        line=${line%$'\r'}
        if [[ -t 1 && $line =~ ^\ *([0-9]+)\ %:|^[0-9]+\ frames$ ]]; then
            { columns=$(terminal_width); } 3>&1
            printf '\r%s\e[K' "$(progress_line "${BASH_REMATCH[1]}" "$line" "$columns")"
            open=1
        else
            ((open == 0)) || echo
            open=0
            printf '%s\n' "$line"
        fi
    done
    ((open == 0)) || echo
}

# Columns of the terminal behind descriptor 3. One that does not tell is taken for a narrow one.
terminal_width()
{
    local size
    size=$(stty size <&3 2>/dev/null) || size="0 0"
    [[ ${size#* } != 0 ]] || size="0 24"
    echo "${size#* }"
}

# progress_line PERCENT TEXT COLUMNS: a bar before the text, as far as there is room; none without a percentage. The
# last column stays free: some terminals wrap as soon as it is written.
progress_line()
{
    local percent=$1 text=$2 columns=$3 cells bar blanks
    cells=$((columns - 1 - ${#text} - 3))
    ((cells <= 50)) || cells=50
    if [[ -n $percent ]] && ((cells >= 5)); then
        printf -v bar '%*s' $((cells * percent / 100)) ''
        printf -v blanks '%*s' $((cells - ${#bar})) ''
        text="[${bar// /=}$blanks] $text"
    fi
    printf '%s' "${text:0:columns - 1}"
}
