# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=dash
# What the scripts that run in the guest share; stands before each of them.

die() {
  echo "$*"
  exit 1
}

# The node of the drive with this product name.
node_of() {
  local model
  model=$(grep -l "^$1" /sys/block/sd*/device/model)
  model=${model#/sys/block/}
  echo "/dev/${model%%/*}"
}

# add_debug_drive: the kernel's own drive as $debug_drive, of which ten sectors cannot be read.
add_debug_drive() {
  modprobe scsi_debug dev_size_mb=64 opts=2 medium_error_start=0x1234 medium_error_count=10
  sleep 1
  debug_drive=$(node_of scsi_debug)
}

# predict_failure: the debug drive does, by MODE SELECT of the page 1Ch with its bit TEST.
predict_failure() {
  printf '\0\0\0\0\034\012\014\006\0\0\0\0\0\0\0\0' >/tmp/exceptions
  sg_raw --send=16 --infile=/tmp/exceptions "$debug_drive" 15 10 00 00 10 00 2>/dev/null
}

# What is to be slow is made of slices of one disk, slowed by dm-delay: each access takes so many milliseconds, which zone
# by zone may be more. Their first and last megabyte are not slowed, so that the metadata is written at once.

# on_disk SERIAL [SECTOR]: the slices that follow are cut from this disk of QEMU.
on_disk() {
  base=$(grep -lx "$1" /sys/block/vd*/serial)
  base=${base#/sys/block/}
  base=/dev/${base%/serial}
  base_end=${2:-0}
}

# slices NAME COUNT MIB DELAY...: /dev/mapper/NAME1 to NAMEn, with a zone for each delay.
slices() {
  local name=$1 count=$2 number table zone=$((($3 - 2) * 2048 / ($# - 3)))
  shift 3
  for number in $(seq "$count"); do
    table=$(
      start=0
      stretch() {
        echo "$start $1 delay $base $((base_end + start)) $2"
        start=$((start + $1))
      }
      stretch 2048 0
      for delay in "$@"; do stretch "$zone" "$delay"; done
      stretch 2048 0
    )
    echo "$table" | DM_DISABLE_UDEV=1 dmsetup create "$name$number"
    base_end=$((base_end + 4096 + zone * $#))
  done
}

# zones DELAY RATIO: delays of sixteen zones of which the last is as fast as RATIO of the first.
zones() { awk -v delay="$1" -v ratio="$2" 'BEGIN { for (i = 0; i < 16; i++) print int(delay / (1 - (1 - ratio) * i / 15)) }'; }

# array MD LEVEL NAME COUNT MIB [OPTION...]: of the slices NAME1 to NAMEn. MISSING=LIST leaves these numbers out.
array() {
  local md=$1 level=$2 name=$3 count=$4 mib=$5 number members=''
  shift 5
  for number in $(seq "$count"); do
    case " ${MISSING-} " in
      *" $number "*) members="$members missing" ;;
      *) members="$members /dev/mapper/$name$number" ;;
    esac
  done
  # shellcheck disable=SC2086 # several words
  mdadm --create "/dev/$md" --quiet --run --level="$level" --raid-devices="$count" --metadata=1.2 --data-offset=1M \
    --size="$((mib - 3))M" "$@" $members
}

# add MD SLICE: as a replacement.
add() { mdadm --quiet "/dev/$1" --add "/dev/mapper/$2"; }

# set_md MD ATTRIBUTE VALUE
set_md() { echo "$3" >"/sys/block/$1/md/$2"; }

now() { cut -d ' ' -f 1 /proc/uptime; }
