#!/usr/bin/env bash
# Fails on any include that the table "Where things are" of CONTRIBUTING.md does not allow:
#   tools/check-layers.sh [ROOT]
# A room is a folder of the table's first column, with all below it. Its files may include each
# other, headers of the standard library, and what the row's last column names: rooms (`core/`),
# single headers (`hmm/toy_reads.h`), libraries (`<tbb>`) and the system (`<posix>`). Unit tests
# may also include what the row of `*_test.cpp` names.
set -euo pipefail
root=${1:-$(dirname "$0")/..}
cd "$root"

sources() {
  find . \( -name '.?*' -o -name 'build*' \) -prune -o \( -name '*.h' -o -name '*.cpp' \) -print
}

sources | sort | sed 's|^\./||' | tr '\n' '\0' |
  xargs -0 grep -nE '^[[:space:]]*#[[:space:]]*include' /dev/null |
  awk -v table=CONTRIBUTING.md '
    # The words in backticks of a cell.
    function words(cell, list,   n, parts, i) {
      n = split(cell, parts, "`")
      for (i = 2; i <= n; i += 2) list[parts[i]] = 1
    }
    function readTable(   line, cell, own, may, room, word) {
      while ((getline line < table) > 0) {
        if (line !~ /^\| `/) continue
        split(line, cell, "|")
        delete own; delete may
        words(cell[2], own); words(cell[4], may)
        for (room in own) {
          rooms[room] = 1
          for (word in may) allowed[room, word] = 1
        }
      }
    }
    function roomOf(path,   room) {
      room = path
      sub(/\/.*/, "/", room)
      return room
    }
    # What an included name stands for in the table: a room or a library; empty for the standard.
    function wordOf(name, quoted) {
      sub(/^velto\//, "include/velto/", name)
      if (quoted || name ~ /^include\/velto\//) return roomOf(name)
      if (name ~ /^(sys\/.*|unistd\.h|fcntl\.h|signal\.h|stdlib\.h)$/) return "<posix>"
      if (name ~ /^oneapi\/tbb\//) return "<tbb>"
      if (name ~ /\//) { sub(/\/.*/, "", name); return "<" name ">" }
      return name ~ /\.h$/ ? "<" name ">" : ""
    }
    function may(room, word, name) { return (room, word) in allowed || (room, name) in allowed }
    BEGIN { readTable() }
    {
      split($0, field, ":")
      room = roomOf(field[1])
      if (!(room in rooms)) {
        print field[1] ": its folder is not in the table of " table; bad = 1; next
      }
      quoted = $0 ~ /include[[:space:]]*"/
      name = $0
      sub(/^[^<"]*[<"]/, "", name); sub(/[>"].*$/, "", name)
      word = wordOf(name, quoted)
      if (word == "" || word == room || may(room, word, name)) next
      if (field[1] ~ /(_test\.cpp|\/test_[^\/]*)$/ && may("*_test.cpp", word, name)) next
      print field[1] ":" field[2] ": " room " may not include " name; bad = 1
    }
    END { exit bad }'
