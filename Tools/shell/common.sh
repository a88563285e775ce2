# What the commands at the top of the tree share. Sourced by bash from the top folder.

# Says on one line what is being done.
say() { printf '\033[1m==> %s\033[0m\n' "$*"; }

# Stops with one clear line.
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# The packages of the given groups, one a line.
packages_of() {
  local group name
  while read -r group names; do
    for wanted in "$@"; do
      [ "$group" = "$wanted" ] && for name in $names; do echo "$name"; done
    done
  done < <(grep -v '^#' Tools/shell/packages.txt)
}

is_installed() {
  case $1 in
    # A Node.js from elsewhere serves as well, and its package conflicts with Debian's.
    nodejs) command -v node >/dev/null ;;
    npm) command -v npm >/dev/null ;;
    *) [ "$(dpkg-query -W -f '${db:Status-Abbrev}' "$1" 2>/dev/null)" = 'ii ' ] ;;
  esac
}

# Installs what is missing of the given groups of packages.txt.
install_packages() {
  command -v apt-get >/dev/null || { say "No apt-get here: taking the tools as they are"; return; }
  local missing=() name
  for name in $(packages_of "$@"); do
    is_installed "$name" || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing ${missing[*]}"
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# configure_and_build PRESET [CMAKE-OPTION...]: quiet when nothing has to be done.
configure_and_build() {
  local preset=$1 folder log
  shift
  folder=build
  [ "$preset" = default ] || folder=build/$preset
  mkdir -p "$folder"
  log=$folder/configure.log
  say "Building ($preset)"
  if [ ! -f "$folder/build.ninja" ] || [ $# -gt 0 ]; then
    cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; fail "configuring failed"; }
  fi
  cmake --build --preset "$preset" || fail "the build failed"
}

# Whether windows can be opened on the display of the environment.
has_display() { [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; }
