#!/usr/bin/env bash
# pages_test.sh PAGES MPUEVENT...: each option of each command stands in its help, in its man page and
# in what bash completes; completion as bash asks for it. PAGES holds what mpuevent_pages has made.
set -u
pages=$1
tool=("${@:2}")
cd "$(dirname "$0")/../../samples" || exit 1
failures=0
fail() {
  printf 'FAILED: %s\n' "$*"
  failures=$((failures + 1))
}

source "$pages/mpuevent.bash"
[ "$(complete -p mpuevent)" = 'complete -F _mpuevent mpuevent' ] || fail "$(complete -p mpuevent)"
# completes WORD...: what bash offers for the last word.
completes() {
  COMP_WORDS=(mpuevent "$@") COMP_CWORD=$# COMPREPLY=()
  _mpuevent
  ((${#COMPREPLY[@]} == 0)) || printf '%s\n' "${COMPREPLY[@]}"
}
# stands OPTION PAGE: as a heading, in roff or, where there is no scdoc, as scdoc reads it.
stands() { sed 's/\\//g' "$2" | grep -qE -- "(fB|\*)$1(fR|\*)"; }

commands=$("${tool[@]}" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
for command in '' $commands; do
  name=mpuevent${command:+-$command}.1
  page=$pages/$name
  [ -e "$page" ] || page=$page.scd
  [ -e "$page" ] || {
    fail "no man page of '$command': write docs/man/$name.scd as the others are; its options come by themselves"
    continue
  }
  options=$("${tool[@]}" help $command | sed -nE 's/^  (-[^ ]*).*/\1/p' | tr , ' ')
  for option in $options ${command:+$(grep -oE -- '--not-[a-z]+ ' <<<"$(_mpuevent_options "$command")")}; do
    stands "$option" "$page" ||
      fail "$option of '$command' is not in docs/man/$name.scd: it takes a line @options@"
    completes $command "$option" | grep -qx -- "$option" ||
      fail "bash does not complete $option of '$command'"
  done
  for section in NAME SYNOPSIS DESCRIPTION OPTIONS 'EXIT STATUS' ENVIRONMENT FILES EXAMPLES 'SEE ALSO'; do
    grep -qE "^(# |\.SH )$section\$" "$page" || fail "$name: no section $section"
  done
  grep -q TIMES "$page" || fail "$name: no word of the epoch: @epoch@, or where to read of it"
  examples=$(sed -nE '/^(# |\.SH )EXAMPLES$/,/^(# |\.SH )SEE ALSO$/p' "$page" | grep -cE '^(\\fB|.\*)')
  [ "$examples" -ge 5 ] || fail "$name: $examples examples, not five"
done

same() { [ "$2" = "$3" ] || fail "$1: '$2', not '$3'"; }
same 'commands' "$(completes '')" "$commands"
same 'a word of an option' "$(completes decode --type e)" Error
same 'behind =' "$(completes decode --type = war)" Warning
same 'behind a comma' "$(completes summary -t Error,w)" Error,Warning
same 'words with blanks' "$(completes decode --source 'i/o')" 'I/O\ Mgr'
same 'words in quotes' "$(completes decode --not-source '"I/O M')" 'I/O Mgr'
same 'categories' "$(completes decode --category env)" Environmental
same 'a number' "$(completes decode -n '')" ''
same 'a file' "$(completes decode -v arr)" array.cmap
same 'a file of an option' "$(completes summary --html arr)" array.cmap
same 'a command to tell of' "$(completes help exp)" explain
if command -v zsh >/dev/null; then zsh -n "$pages/_mpuevent" || fail 'zsh does not read _mpuevent'; fi

[ "$failures" = 0 ]
