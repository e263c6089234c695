# shellcheck shell=bash
# Read by ./run, ./test and the like: brings in the Debian packages they need. Expects to be
# sourced with the project's folder as working directory.

say() { printf '\033[1m==>\033[0m %s\n' "$*"; }

die() {
  printf '%s\n' "$*" >&2
  exit 2
}

# wanted_packages LIST... : the names in packaging/debian-LIST.txt
wanted_packages() {
  local list
  for list in "$@"; do
    sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "packaging/debian-$list.txt"
  done
}

# missing_packages LIST... : those of them that are not installed
missing_packages() {
  local wanted installed
  wanted=$(wanted_packages "$@" | sort -u)
  # shellcheck disable=SC2086
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null |
    sed -n 's/^installed //p' | sort -u)
  comm -23 <(printf '%s\n' "$wanted") <(printf '%s\n' "$installed")
}

# need LIST... : installs what is missing, and asks the network for nothing when nothing is
need() {
  local missing root=()
  command -v dpkg-query >/dev/null ||
    die "This needs Debian's packages; packaging/debian-*.txt tells what to install by hand."
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      die "Missing packages, and neither root nor sudo to install them:" $missing
    root=(sudo)
  fi
  say "Installing" $missing
  # root's own environment keeps apt from asking questions, whatever sudo lets through.
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q update </dev/null
  # shellcheck disable=SC2086
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -q install -y --no-install-recommends $missing </dev/null
}

# configure PRESET DIR OPTION... : configures once; the build itself notices later changes
configure() {
  local preset=$1 dir=$2
  shift 2
  [ -f "$dir/build.ninja" ] && [ "$(cat "$dir/.options" 2>/dev/null)" = "$*" ] && return 0
  say "Configuring $dir"
  cmake --preset "$preset" -B "$dir" "$@" >"$dir.log" 2>&1 ||
    { cat "$dir.log" >&2; return 1; }
  printf '%s' "$*" >"$dir/.options"
}

# A base system has no locale set, and names on disk are mostly UTF-8.
export LANG=${LANG:-C.UTF-8}
mkdir -p build
