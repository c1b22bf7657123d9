#!/usr/bin/env bash
# Every shell command written in README.md and docs/*.md runs as written or is checked, from the
# repository's root on a Debian machine set up by tools/install-deps.sh:
#   - a ```console block is a session: each "$ " line is run (the blocks of one file in one shell, in
#     order) and must exit with status 0, and every other line of the block must appear in what they
#     print, in order ("..." stands for any lines). A command whose next line is "$ echo $?" may exit
#     with another status: the document shows it, and the session compares it;
#   - a ```sh block and an inline `command` (one whose first word is a program) are checked: the
#     program exists (a repository script, a program this project builds, or one on the PATH), its
#     --options are ones it knows, cmake's -D variables and ninja's targets exist, and the files and
#     folders it names are there;
#   - an inline command that names a file of the release package (`sha256sum -c SHA256SUMS`) also
#     runs, as written, in the unpacked package the Windows tree builds (build/win/package);
#   - a ```bat block, and an inline command of a Windows program (regsvr32, cscript, msiexec, aximp,
#     or a path such as %SystemRoot%\System32\cscript.exe), is a Windows command: it stays on paper
#     and is counted, one "paper" line each.
# Sessions that call Wine or the cross compiler, and the package's commands, run in the Windows
# tree's test, the others in the native tree's.
#   check-doc-commands.sh ROOT native   the checks, and the sessions without Wine
#   check-doc-commands.sh ROOT wine     the sessions with Wine (the private prefix and display must be up)
# Prints a line per session, package command and Windows command, and exits 1 when a command does
# not run as written or fails its check.
set -uo pipefail
root=$(cd "$1" && pwd)
mode=$2
cd "$root" || exit 2
failed=0
checked=0 ran=0 packaged=0 paper=0
fail() { echo "FAIL $*"; failed=1; }

docs=(README.md docs/*.md)
# Programs of the other platform: written for Windows, never run here.
windows_programs=" regsvr32 regsvr32.exe cscript cscript.exe wscript msiexec msiexec.exe aximp aximp.exe "
# A Windows program named by its path: %SystemRoot%\System32\cscript.exe, C:\Path\To\tool.exe.
is_windows_path() { [[ "$1" == %*%\\* || "$1" =~ ^[A-Za-z]:\\ ]] && [[ "$1" == *.exe ]]; }
# A command's first word that makes it a Windows command, kept on paper: a Windows program, or a
# word that begins as a Windows path does.
is_windows_command() { [[ "$windows_programs" == *" $1 "* || "$1" == %* || "$1" =~ ^[A-Za-z]:\\ ]]; }
# Programs this project builds (their options are in tools/NAME/).
built_programs=" kivdoctor kivdemo mktypelib "

# The commands of the documents, one record per line: FILE:LINE, a tab, a kind, a tab, the text.
#   sh / console (a "$ " line) / out (a console block's other line) / end (a console block's end) /
#   bat / inline
extract() {
  awk '
    function emit(kind, text) { printf "%s:%d\t%s\t%s\n", FILENAME, FNR, kind, text }
    FNR == 1 { fence = ""; pending = "" }
    /^```/ {
      if (fence == "") { fence = substr($0, 4); sub(/[ \t].*/, "", fence); if (fence == "") fence = "text"; start = FNR; next }
      if (fence == "console") printf "%s:%d\tend\t\n", FILENAME, start
      fence = ""; next
    }
    fence == "sh" || fence == "bash" || fence == "console" {
      line = $0
      if (fence == "console" && pending == "" && line !~ /^\$ /) { emit("out", line); next }
      if (fence == "console" && pending == "") line = substr(line, 3)
      if (line ~ /\\$/) { pending = pending substr(line, 1, length(line) - 1); next }
      line = pending line; pending = ""
      if (line ~ /^[ \t]*(#|$)/) next
      emit(fence == "console" ? "console" : "sh", line); next
    }
    fence == "bat" || fence == "cmd" { if ($0 !~ /^[ \t]*(rem |::|$)/) emit("bat", $0); next }
    fence != "" { next }
    {
      rest = $0
      while (match(rest, /`[^`]+`/)) {
        emit("inline", substr(rest, RSTART + 1, RLENGTH - 2))
        rest = substr(rest, RSTART + RLENGTH)
      }
    }
  ' "${docs[@]}"
}

# The CMake targets the project defines, and the variables its CMake files know.
targets=$(grep -rhoE --include=CMakeLists.txt 'add_(executable|library|custom_target)\(\s*[A-Za-z0-9_]+' . |
  sed -E 's/.*\(\s*//' | sort -u | tr '\n' ' ')
cmake_words=$(cat $(find . -path ./build -prune -o \( -name CMakeLists.txt -o -name '*.cmake' \) -print) | tr -c 'A-Za-z0-9_' '\n' | sort -u)

# Whether an inline code span's first word is a program: a script of the repository (*.sh), an
# executable file of it, a program this project builds, or a known command.
is_program_word() {
  local w=$1
  case "$w" in
  */*.sh) return 0 ;;
  build/*) [[ "$built_programs" == *" $(basename "$w") "* ]]; return ;;
  tools/* | ./tools/* | docs/examples/*) [ -f "$w" ] && [ -x "$w" ]; return ;;
  esac
  case " cmake ninja ctest wine wineserver winepath optipng git apt-get sha256sum x86_64-w64-mingw32-g++ x86_64-w64-mingw32-gcc duplicates " in
  *" $w "*) return 0 ;;
  esac
  is_windows_path "$w" && return 0
  [[ "$windows_programs$built_programs" == *" $w "* ]]
}

# check_simple LOCATION WORDS...: one simple command (no && or |).
check_simple() {
  local where=$1; shift
  local words=("$@") i=0
  while [ $i -lt ${#words[@]} ] && [[ "${words[$i]}" =~ ^[A-Za-z_][A-Za-z0-9_]*= ]]; do i=$((i + 1)); done
  [ $i -lt ${#words[@]} ] || return 0
  local program=${words[$i]} source=""
  case "$program" in
  export | echo | cat | ls | mkdir | cp | rm | diff) return 0 ;;
  cd)
    local dir=${words[$((i + 1))]:-}
    [ -z "$dir" ] || [[ "$dir" == build/* ]] || [ -d "$dir" ] || fail "$where: no folder $dir"
    return 0 ;;
  esac
  if is_windows_command "$program"; then
    paper=$((paper + 1)); echo "paper $where: ${words[*]}"; return 0
  fi
  if [[ "$program" == build/* ]]; then
    local tree=${program#build/}; tree=build/${tree%%/*}
    if [ -d "$tree" ] && [ ! -e "$program" ]; then fail "$where: $program is not built in $tree"; fi
    source=tools/$(basename "$program")
  elif [[ "$program" == */* ]]; then
    [ -x "$program" ] || fail "$where: $program is not an executable file of the repository"
    source=$program
  elif [[ "$built_programs" == *" $program "* ]]; then
    source=tools/$program
  else
    command -v "$program" > /dev/null 2>&1 || fail "$where: $program is not installed (tools/install-deps.sh)"
  fi
  local previous=$program
  for ((i = i + 1; i < ${#words[@]}; i++)); do
    local w=${words[$i]}
    case "$w" in
    --*)
      local option=${w%%=*}
      if [ -n "$source" ] && [ -e "$source" ] && ! grep -rqE -- "$option([^A-Za-z0-9_-]|\$)" "$source"; then
        fail "$where: $program has no option $option"
      fi ;;
    -D*)
      local variable=${w#-D}; variable=${variable%%[:=]*}
      [[ "$variable" == CMAKE_* ]] || grep -qx "$variable" <<< "$cmake_words" || fail "$where: no CMake variable $variable"
      local value=${w#*=}
      [[ "$value" == */* ]] && [ ! -e "$value" ] && fail "$where: no file $value" ;;
    -o) i=$((i + 1)) ;;  # an output
    -* | /[A-Za-z] | /[A-Za-z][A-Za-z] | /[A-Za-z][A-Za-z][A-Za-z]) ;;  # options, and a Windows program's (/u)
    *)
      if [ "$program" = ninja ] && [ "$previous" != -C ] && [[ "$w" != */* ]]; then
        [[ " $targets " == *" $w "* ]] || fail "$where: ninja has no target $w"
      elif [[ "$w" == */* && "$w" != build/* && "$w" != //* && "$w" != *'<'* && "$w" != *'$'* && "$w" != *:* && "$w" != *'\'* ]]; then
        [ -e "$w" ] || [ -d "$(dirname "$w")" -a "$previous" = --sheet ] || fail "$where: no file or folder $w"
      fi ;;
    esac
    previous=$w
  done
}

# check_line LOCATION TEXT: a command line, split into simple commands.
check_line() {
  local where=$1 text=$2 part
  text=${text//&&/;}
  text=${text//||/;}
  text=${text//|/;}
  text=${text//(/ }
  text=${text//)/ }
  IFS=';' read -ra parts <<< "$text"
  for part in "${parts[@]}"; do
    # Words as the shell splits them, without expanding anything.
    read -ra words <<< "$part"
    [ ${#words[@]} -gt 0 ] && check_simple "$where" "${words[@]}"
  done
  checked=$((checked + 1))
}

records=$(extract)
[ -n "${KIV_DOC_COMMANDS_LIST:-}" ] && { echo "$records"; exit 0; }

if [ "$mode" = native ]; then
  while IFS=$'\t' read -r where kind text; do
    case $kind in
    sh | console) check_line "$where" "$text" ;;
    bat) paper=$((paper + 1)); echo "paper $where: $text" ;;
    inline)
      read -ra words <<< "$text"
      first=${words[0]:-}
      while [[ "$first" =~ ^[A-Za-z_][A-Za-z0-9_]*= ]] && [ ${#words[@]} -gt 1 ]; do words=("${words[@]:1}"); first=${words[0]}; done
      if is_program_word "$first"; then
        # A usage line (kivdoctor lin FILE [NAME...]) names its options but has no real arguments.
        check_line "$where" "$(sed -E 's/\[[^]]*\]//g; s/(^| )[A-Z][A-Z_.]*[A-Z]( |$)/\1\2/g; s/(^| )[A-Z][A-Z_.]*[A-Z]( |$)/\1\2/g' <<< "$text")"
      fi ;;
    esac
  done <<< "$records"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The inline commands that name a file of the release package run in the package the Windows tree
# builds, unpacked afresh for each (the README: "sha256sum -c SHA256SUMS in the unpacked folder").
if [ "$mode" = wine ]; then
  version=$(sed -nE 's/^project\(KivLorqControls VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
  zip=build/win/package/KivLorqControls-$version-x64.zip
  if [ ! -f "$zip" ]; then
    fail "no package $zip: the Windows tree builds it (ninja -C build/win)"
  else
    package_files=$(unzip -Z1 "$zip" | grep -v '/$')
    while IFS=$'\t' read -r where kind text; do
      [ "$kind" = inline ] || continue
      read -ra words <<< "$text"
      first=${words[0]:-}
      is_program_word "$first" || continue
      if [ "$first" = wine ] || is_windows_command "$first"; then continue; fi
      names_package_file=0
      for w in "${words[@]:1}"; do grep -qxF -- "$w" <<< "$package_files" && names_package_file=1; done
      [ $names_package_file = 1 ] || continue
      unpacked=$work/package
      rm -rf "$unpacked" && mkdir -p "$unpacked" && unzip -q "$zip" -d "$unpacked"
      packaged=$((packaged + 1))
      if output=$(cd "$unpacked" && timeout -k 5 120 bash -c "$text" 2>&1 < /dev/null); then
        echo "ok   $where: $text, in the unpacked $(basename "$zip")"
      else
        fail "$where: $text exited with status $? in the unpacked $(basename "$zip")"
        sed 's/^/    /' <<< "$output" | head -20
      fi
    done <<< "$records"
  fi
fi

# The sessions of this mode: each file's "$ " lines run in one shell, each block's output compared.
# After each command the session notes a status other than 0 ("@@exit STATUS FILE:LINE"), unless the
# document's next command is "echo $?", which prints it for the comparison.
uses_wine() { grep -qE '(^|[ /;(])wine( |$)|x86_64-w64-mingw32-' <<< "$1"; }
for file in "${docs[@]}"; do
  script=$work/session.sh
  echo 'set -o pipefail' > "$script"
  : > "$work/expected"
  block=0 commands="" expected="" texts=() places=()
  while IFS=$'\t' read -r where kind text; do
    [[ "$where" == "$file:"* ]] || continue
    case $kind in
    console) commands+="$text"$'\n'; texts+=("$text"); places+=("$where") ;;
    out) expected+="$text"$'\n' ;;
    end)
      if [ -n "$commands" ]; then
        want=native; uses_wine "$commands" && want=wine
        if [ "$want" = "$mode" ]; then
          block=$((block + 1))
          {
            echo "echo '@@block $block $where'"
            for ((k = 0; k < ${#texts[@]}; k++)); do
              printf '%s\n' "${texts[k]}"
              [ "${texts[k + 1]:-}" = 'echo $?' ] ||
                printf '__kiv_status=$?; [ $__kiv_status -eq 0 ] || echo "@@exit $__kiv_status %s"\n' "${places[k]}"
            done
          } >> "$script"
          printf '@@block %d %s\n%s' "$block" "$where" "$expected" >> "$work/expected"
        fi
      fi
      commands="" expected="" texts=() places=() ;;
    esac
  done <<< "$records"
  [ $block -gt 0 ] || continue
  (cd "$root" && timeout -k 5 600 bash "$script" > "$work/actual" 2>&1 < /dev/null)
  # Compare block by block: the expected lines, in order, among the lines printed.
  for ((b = 1; b <= block; b++)); do
    awk -v b="$b" '$0 ~ "^@@block " b " " { on = 1; next } /^@@block / { on = 0 } on' "$work/expected" > "$work/want"
    awk -v b="$b" '$0 ~ "^@@block " b " " { on = 1; next } /^@@block / { on = 0 } on' "$work/actual" > "$work/got"
    where=$(grep -m1 "^@@block $b " "$work/expected" | cut -d' ' -f3)
    missing=$(awk '
      NR == FNR { sub(/[ \t\r]+$/, ""); got[++n] = $0; next }
      { sub(/[ \t\r]+$/, "") }
      $0 ~ /^[ \t]*(\.\.\.)?$/ { next }
      { while (i < n && got[++i] != $0) {} if (got[i] != $0) { print; exit } }
    ' "$work/got" "$work/want")
    ran=$((ran + 1))
    exits=$(sed -n 's/^@@exit \([0-9]*\) \(.*\)/\2: the command exited with status \1/p' "$work/got")
    if [ -n "$exits" ]; then
      while read -r line; do fail "$line"; done <<< "$exits"
      sed 's/^/    /' "$work/got" | head -40
    elif [ -n "$missing" ]; then
      fail "$where: the session did not print: $missing"
      sed 's/^/    /' "$work/got" | head -40
    else
      echo "ok   $where: the session printed what the document shows"
    fi
  done
done

echo "check-doc-commands ($mode): $checked checked, $ran sessions run, $packaged run in the package, $paper Windows commands on paper"
exit $failed
