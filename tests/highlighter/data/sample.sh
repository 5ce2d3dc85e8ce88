#!/usr/bin/env bash
# Backs up the folders named in a list; keeps the last $KEEP copies.
set -euo pipefail

readonly KEEP=${KEEP:-7}
readonly TARGET="${1:?usage: backup.sh TARGET [LIST]}"
LIST=${2:-$HOME/.config/backup/list}
export LC_ALL=C.UTF-8

log() { echo "$(date '+%F %T') $*" >&2; }

function newest() {
    local folder=$1
    ls -1dt "$folder"/20[0-9][0-9]-* 2>/dev/null | head -n 1
}

copy() {
    local source=$1 name previous
    name=$(basename "$source")
    previous=$(newest "$TARGET/$name" || true)
    mkdir -p "$TARGET/$name"
    # Unchanged files become hard links, so a copy costs only what's new.
    rsync -a --delete ${previous:+--link-dest="$previous"} \
        "$source/" "$TARGET/$name/$(date +%F-%H%M%S)/" || return 23
}

prune() {
    local name=$1 count=0
    for old in $(ls -1dt "$TARGET/$name"/* 2>/dev/null); do
        count=$((count + 1))
        if [ "$count" -gt "$KEEP" ]; then
            log "removing ${old##*/} (#$count)"
            rm -rf -- "$old"
        else
            continue
        fi
    done
}

[[ -r $LIST ]] || { log "no list at $LIST"; exit 2; }
while IFS= read -r line; do
    case "$line" in
        ''|'#'*) continue ;;
        http://*|https://*) log 'remote sources are not copied' ;;
        *)
            if copy "$line"; then
                prune "$(basename "$line")"
            elif [[ $? -eq 24 ]]; then
                log "files vanished in $line"
            fi
            ;;
    esac
done <"$LIST"

awk -F: '$3 >= 1000 { print $1, 0.5 * $3 }' /etc/passwd | sort -k2,2n
cat <<EOF
Done: it's $(date +%H) o'clock, `uptime -p`
EOF
unset LIST
curl --fail --silent "https://ping.example/backup?host=$(hostname)#done" >/dev/null
