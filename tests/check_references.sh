#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Checks that what documents and comments refer to exists: relative links with their headings, and
# names of files; and that no list of a document has a link twice.
set -u
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"

readonly FOLDERS=(src tests bench fuzz examples cmake packaging python docs)
mapfile -t FILES < <(find "${FOLDERS[@]}" -type f; find . -maxdepth 1 -type f -printf '%f\n')
readonly DOCUMENTS=(README.md CONTRIBUTING.md CHANGELOG.md)

documents() { find docs -name '*.md'; ls "${DOCUMENTS[@]}"; }
sources() { find src tests bench fuzz examples python -name '*.cpp' -o -name '*.h'; }
scripts() { find tests packaging cmake src bench fuzz examples -name '*.sh' -o -name '*.cmake' -o -name CMakeLists.txt; ls dev CMakeLists.txt; }

{
  printf 'exists %s\n' "${FILES[@]}"
  documents | sed 's/^/document /'
  sources | sed 's/^/source /'
  scripts | sed 's/^/script /'
} | awk '
  function complain(text) { printf "%s:%d: %s\n", name, line, text; bad = 1 }

  # A path is known by each of its ends, as in an include; folders only whole.
  function learn(path,   rest) {
    for (rest = path; rest != ""; rest = rest ~ "/" ? substr(rest, index(rest, "/") + 1) : "") known[rest]
    for (rest = path; sub("/[^/]*$", "", rest);) whole[rest]
    whole[path]
  }
  function parent(path) { return sub("/[^/]*$", "", path) ? path : "" }
  function joined(folder, target) {
    for (; sub("^[.][.]/", "", target);) folder = parent(folder)
    return folder == "" ? target : folder "/" target
  }
  # The name that readers of Markdown give a heading.
  function slug(heading) {
    heading = tolower(heading)
    gsub("[^a-z0-9 _-]", "", heading)
    gsub(" ", "-", heading)
    return heading
  }
  function has_heading(path, anchor,   text) {
    if (!(path in headings_read)) {
      headings_read[path]
      while ((getline text < path) > 0) if (sub("^#+ +", "", text)) headings[path "#" slug(text)]
      close(path)
    }
    return (path "#" anchor) in headings
  }
  function check_link(target,   path, anchor) {
    if (target ~ "^[a-z]+:") return
    if (in_list && (target in listed)) complain(target " is in this list already")
    listed[target]
    path = anchor = target
    sub("#.*", "", path)
    path = path == "" ? name : joined(parent(name), path)
    if (!(path in whole)) complain("there is no " target)
    else if (sub(".*#", "", anchor) && !has_heading(path, anchor)) complain("no heading of " target)
  }
  # "_windows.cpp" is short for a name that ends so, "name.*" for a group of files.
  function is_file(word,   path) {
    gsub("^([.][.]?/)+", "", word)
    if (word in known) return 1
    for (path in known) {
      if (word ~ "^_" && substr(path, length(path) - length(word) + 1) == word) return 1
      if (word ~ "[*]$" && index(path, substr(word, 1, length(word) - 1)) == 1) return 1
    }
    return 0
  }
  function check_names(text,   word) {
    gsub("<[^>]*>", "", text)  # headers of systems and libraries
    while (match(text, "[A-Za-z0-9_./-]+[.](md|h|cpp|sh|cmake|awk|[*])")) {
      word = substr(text, RSTART, RLENGTH)
      text = substr(text, RSTART + RLENGTH)
      if (text ~ "^[A-Za-z0-9_]") continue             # a longer ending
      if (word ~ "(NAME|SYSTEM)[.]") continue          # a placeholder
      if (word ~ "[*]$" && word !~ "_") continue       # files of users
      if (!is_file(word)) complain("there is no " word)
    }
  }
  function read_document(   text, names) {
    in_list = in_block = 0
    for (line = 1; (getline text < name) > 0; ++line) {
      if (text ~ "^```") in_block = !in_block
      if (in_block) continue
      if (text ~ "^ *([-*]|[0-9]+[.]) ") { if (!in_list) delete listed; in_list = 1 }
      else if (text !~ "^ +[^ ]") in_list = 0
      names = text
      gsub("\\]\\([^)]*\\)", "", names)  # links, which come next
      check_names(names)
      while (match(text, "\\]\\([^)]+\\)")) {
        check_link(substr(text, RSTART + 2, RLENGTH - 3))
        text = substr(text, RSTART + RLENGTH)
      }
    }
    close(name)
  }
  function read_comments(mark,   text) {
    for (line = 1; (getline text < name) > 0; ++line)
      if (match(text, mark)) check_names(substr(text, RSTART + RLENGTH))
    close(name)
  }

  { name = $2 }
  $1 == "exists" { learn(name); next }
  $1 == "document" { read_document(); ++read }
  $1 == "source" { read_comments("//"); ++read }
  $1 == "script" { read_comments("(^|[ \t])# "); ++read }
  END {
    if (read < 100) { print "hardly a file was read"; bad = 1 }
    exit bad
  }'
