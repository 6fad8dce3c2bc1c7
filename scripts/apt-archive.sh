# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Uses a Debian release with a separate apt configuration, which does not change the machine's; sourced, not
# run.

# Prints address and place (file:number) of the machine's own source of its Debian release. apt itself reads
# the source files, so that every format and option is understood.
own_source() {
  local release
  release=$(. /etc/os-release 2>/dev/null && say "${VERSION_CODENAME:-}")
  # shellcheck disable=SC2016 # apt-get fills these in
  apt-get indextargets --format '$(CODENAME) $(COMPONENT) $(REPO_URI) $(SOURCESENTRY)' \
    'Identifier: Packages' 'Origin: Debian' |
    awk -v release="$release" '!found && $1 == release && $2 == "main" && $3 !~ /^cdrom:/ { found = 1; print $3, $4 }'
}

# Prints the Signed-By field of the source entry at the given place, or nothing if it has none. The number of
# a place counts paragraphs in .sources files and lines in .list files.
signed_by() {
  local file=${1%:*} number=${1##*:}
  case $file in
    *.sources)
      awk -v number="$number" '
        /^#/ { next }
        /^[[:space:]]*$/ { inside = 0; next }
        !inside { inside = 1; paragraph++; wanted = 0 }
        /^[^[:space:]]/ { wanted = tolower($0) ~ /^signed-by:/ }
        paragraph == number && wanted' "$file"
      ;;
    *)
      sed -nE "${number}s/^[^]]*[[ ]signed-by=([^] ]+).*/Signed-By: \1/p" "$file" | tr ',' ' '
      ;;
  esac
}

# configure_archive FOLDER RELEASE: an apt configuration in FOLDER whose only source is that release, from the
# same address as the machine's own. Sets ARCHIVE_ADDRESS and ARCHIVE_OPTIONS, the options that make apt use
# it.
configure_archive() {
  local folder=$1 release=$2 source
  source=$(own_source)
  [ -n "$source" ] || die "the apt sources name no Debian archive to take $release from"
  ARCHIVE_ADDRESS=${source%% *}

  mkdir -p "$folder/sources" "$folder/preferences" "$folder/lists/partial" "$folder/cache/archives/partial"
  {
    say "Types: deb"
    say "URIs: $ARCHIVE_ADDRESS"
    say "Suites: $release"
    say "Components: main"
    signed_by "${source#* }"
  } >"$folder/sources/$release.sources"
  # shellcheck disable=SC2034 # for the scripts that source this
  ARCHIVE_OPTIONS=(
    -o Dir::Etc::SourceList=/dev/null
    -o Dir::Etc::SourceParts="$folder/sources"
    -o Dir::Etc::PreferencesParts="$folder/preferences"
    -o Dir::State::Lists="$folder/lists"
    -o Dir::Cache="$folder/cache"
    -o Acquire::Languages=none
    -o Acquire::AllowInsecureRepositories=false
    -o APT::Get::AllowUnauthenticated=false
    -o APT::Update::Error-Mode=any
  )
}
