#!/usr/bin/env bash
# Asks the real shells what they complete: completions.sh PROGRAM. Exit status 77 when none of them is there.
set -uo pipefail
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for shell in bash zsh fish; do "$program" --generate $shell >"$folder/$shell" || exit 1; done
mkdir "$folder/files"
touch "$folder/files/pump.CATPart" "$folder/files/session.json"
cd "$folder/files" || exit 1
failed=0

# Each prints what may stand in the place of the last word of a line, one a line.
complete_bash() {
    bash --norc -c 'source "$0"; shift; COMP_WORDS=(); read -ra COMP_WORDS <<<"$1"; [[ $1 != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _vorntools; printf "%s\n" "${COMPREPLY[@]}"' "$folder/bash" x "$1"
}
complete_fish() { fish --no-config -c "source '$folder/fish'; complete -C '$1'" | cut -f 1; }
# zsh completes in a terminal only: one of its own, in which the list of matches is printed instead of shown.
complete_zsh() {
    zsh -f -c '
        zmodload zsh/zpty
        zpty inner zsh -f -i
        zpty -w inner "PS1=; fpath=('"$folder"'/functions \$fpath); autoload -Uz compinit; compinit -D -u"
        zpty -w inner "compadd() { if [[ \$1 == -O || \$1 == -A || \$1 == -D || \${@[1,(i)(-|--)]} == *-(O|A|D)\\ * ]]; then
            builtin compadd \"\$@\"; return; fi
            typeset -a found; builtin compadd -O found \"\$@\"; print -l -- \"MATCH \"\${^found}; builtin compadd \"\$@\" }"
        zpty -w inner "echo READY\$((1 + 1))"
        zpty -r inner seen "*READY2*"
        zpty -n -w inner "$1"$'"'\\t'"'
        seen= rounds=0
        while (( rounds++ < 100 )); do # ten seconds, or until nothing has come behind the matches for a while
            sleep 0.1
            before=$seen
            while zpty -rt inner line; do seen+=$line; done
            [[ $seen == *MATCH* && $seen == $before ]] && break
        done
        print -r -- "$seen"
        zpty -d inner' zsh "$1" | tr -d '\r' | sed -n 's/.*MATCH //p' | sort -u
}

# expect SHELL LINE WORD...: all of these words complete the line; with "!" in front one does not.
expect() {
    local shell=$1 line=$2 answer word
    shift 2
    answer=$("complete_$shell" "$line")
    for word in "$@"; do
        if [ "${word#!}" = "$word" ] && ! grep -qx -- "$word" <<<"$answer" ||
            { [ "${word#!}" != "$word" ] && grep -qx -- "${word#!}" <<<"$answer"; }; then
            echo "$shell completes '$line' wrongly: $word; its answer:" $answer
            failed=1
        fi
    done
}

mkdir "$folder/functions"
mv "$folder/zsh" "$folder/functions/_vorntools"
tried=0
for shell in bash zsh fish; do
    command -v $shell >/dev/null || continue
    tried=1
    expect $shell 'vorntools st' status '!dat'
    expect $shell 'vorntools status --s' --sort --session '!--json'
    expect $shell 'vorntools status --sort r' reason '!document'
    expect $shell 'vorntools status p' pump.CATPart
    expect $shell 'vorntools run session.json m' modes masks '!status' '!documents'
    expect $shell 'vorntools run session.json switch --t' --to
    expect $shell 'vorntools --color n' never '!pump.CATPart'
done
[ $tried = 1 ] || exit 77
exit $failed
