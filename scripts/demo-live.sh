# The page of ./demo --live: where it is, and whether it is there. Bash; source it behind demo-options.sh.

PAGE_SECONDS=60 # that a busy machine may take from the host program's start to the page

# Sets page_address, page_port and page_token as the library will, page_end, where this machine reaches the page, and
# page_url. Wrong settings end the script here: the library would ignore them, and the page be elsewhere.
read_page_settings()
{
    local shown
    page_address=${TESSLO_BROWSER_ADDRESS:-127.0.0.1} page_port=${TESSLO_BROWSER_PORT:-7600}
    page_token=${TESSLO_BROWSER_TOKEN:-}
    is_number "$page_port" 1 65535 || refuse "TESSLO_BROWSER_PORT=$page_port: expected 1 to 65535"
    [[ $page_address =~ ^[0-9a-fA-F.:]+$ ]] || refuse "TESSLO_BROWSER_ADDRESS=$page_address: expected a number"
    [[ -z $page_token || $page_token =~ ^[A-Za-z0-9_-]{16,64}$ ]] ||
        refuse "TESSLO_BROWSER_TOKEN: expected 16 to 64 letters, digits, - and _"
    [[ -n $page_token || $page_address == 127.0.0.1 || $page_address == ::1 ]] ||
        refuse "TESSLO_BROWSER_ADDRESS=$page_address: other machines reach it, which needs TESSLO_BROWSER_TOKEN"
    page_host=$page_address shown=$page_address
    case $page_address in
        0.0.0.0) page_host=127.0.0.1 shown=$(uname -n) ;;
        ::) page_host=::1 shown=$(uname -n) ;;
    esac
    page_end=$(bracketed "$page_host"):$page_port
    page_path=/${page_token:+$page_token/}
    page_url=http://$(bracketed "$shown"):$page_port$page_path
}

# An address with colons, as it stands before a port.
bracketed()
{
    [[ $1 != *:* ]] && echo "$1" || echo "[$1]"
}

# Prints what is at the page's port: "page", "nothing" or "other".
look_at_port()
{
    (exec 3<>"/dev/tcp/$page_host/$page_port") 2>/dev/null || { echo nothing; return; }
    [[ $(ask_page 2>/dev/null | tr -d '\0') == *"<title>Virtual monitors</title>"* ]] && echo page || echo other
}

ask_page()
{
    exec 3<>"/dev/tcp/$page_host/$page_port"
    printf 'GET %s HTTP/1.1\r\nHost: %s\r\nConnection: close\r\n\r\n' "$page_path" "$page_end" >&3
    timeout 5 head -c 4096 <&3
}

# Another process that serves the page is joined; anything else would leave the page without its port.
check_port()
{
    [[ $(look_at_port) != other ]] ||
        die "something else is served at $page_end; TESSLO_BROWSER_PORT names another port"
}

# announce_page HOST: tells where the page is, as soon as it is there. If it never comes, ends the host program, whose
# process that is, and returns 1.
announce_page()
{
    local end=$((SECONDS + PAGE_SECONDS))
    until [[ $(look_at_port) == page ]]; do
        if ((SECONDS >= end)); then
            kill -INT "$1" 2>/dev/null || true
            return 1
        fi
        sleep 0.2
    done
    say "open $page_url in a web browser; Ctrl-C ends"
    say "from another machine: ssh -L $page_port:$page_end $(uname -n), then http://127.0.0.1:$page_port$page_path there"
}
