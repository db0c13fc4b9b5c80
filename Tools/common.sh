# Shared by ./run and ./test; sourced, with $root set to the root of the tree.
# shellcheck shell=bash

user_cache=${XDG_CACHE_HOME:-${HOME:?}/.cache}

# All clones of the user share the cache, which is outside the tree and contains no absolute paths. ccache needs this
# sloppiness to support precompiled headers.
export CCACHE_SLOPPINESS=pch_defines,time_macros
export CCACHE_DIR=${CCACHE_DIR:-$user_cache/tolmi/ccache} CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

say() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
}

fail() {
  say "$*"
  exit 2
}

# steps_left PRESET [TARGET...]: prints the number of remaining build steps.
steps_left() {
  local folder=$root/build/$1
  shift
  cmake --build "$folder" ${1:+--target "$@"} -- -n | sed -nE 's/^\[[0-9]+\/([0-9]+)\].*/\1/p' | tail -n 1
}

# build PRESET [TARGET...]: builds the targets, or everything. Prints nothing if there is nothing to do.
build() {
  local preset=$1 folder=$root/build/$1 steps
  if [[ ! -f $folder/build.ninja || $root/CMakePresets.json -nt $folder/build.ninja ]]; then
    say "configuring the $preset build, some ten seconds"
    (cd "$root" && cmake --preset "$preset")
  fi
  steps=$(steps_left "$@")
  shift
  [[ $steps ]] || return 0
  if ((steps < 100)); then
    say "building"
  else
    say "building: $steps steps, some minutes the first time, much less once their results are cached"
  fi
  cmake --build "$folder" --parallel "$(nproc)" ${1:+--target "$@"}
}
