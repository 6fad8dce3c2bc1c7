# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=dash disable=SC2154 # $m1 and so on are disks, $debug_drive comes from common.sh
# Runs in the guest: what becomes of arrays and drives, step by step. After each step the example service tells how they
# are, and so do the kernel, mdadm and smartctl: a folder a step. What does not come about within 30 seconds ends it all.

# facts FOLDER: what the kernel and mdadm say of the arrays, and of the drives that are in none.
facts() {
  local array
  mkdir "$1"
  (
    cd /sys/block || exit
    ls -d ./*/device ./*/holders/* ./*/*/partition 2>/dev/null || true
    grep '' ./*/size ./*/queue/rotational
  ) >"$1/disks"
  for array in /sys/block/md*; do
    [ -e "$array/md/array_state" ] || continue
    array=${array##*/}
    # A partition's drive is above it.
    (cd "/sys/block/$array" && grep -s '' size md/[a-z]* md/dev-*/[a-z]* md/dev-*/block/queue/rotational \
      md/dev-*/block/../queue/rotational) >"$1/$array.sysfs" || true
    mdadm --detail "/dev/$array" >"$1/$array.detail"
    mdadm --detail --export "/dev/$array" >"$1/$array.export"
  done
}

# step TEXT: the arrays are looked at before and after the service looks at them: a rebuild gets on meanwhile.
count=100
step() {
  local drive
  count=$((count + 1))
  mkdir $count
  echo "$1" >$count/title
  echo "$(cut -d ' ' -f 1 /proc/uptime) $1"
  facts $count/before
  service --json /lib/service >$count/inventory.json 2>$count/errors || true
  facts $count/after
  for drive in nvme0 $(cd /sys/block && echo sd*); do
    smartctl --json=c -x "/dev/$drive" >"$count/$drive.smartctl" || [ $(($? & 3)) = 0 ] || die "$drive cannot be read"
    (
      cd "/sys/block/$drive/device" 2>/dev/null || cd "/sys/class/nvme/$drive" || exit
      grep -s '' model rev firmware_rev serial block/*/queue/rotational
    ) >"$count/$drive.sysfs" || true
  done
}

# reach ATTRIBUTE VALUE: of the array.
reach() {
  local tries=0 value
  until value=$(cat "/sys/block/$md/md/$1" 2>&1) && [ "$value" = "$2" ]; do
    tries=$((tries + 1))
    [ $tries -lt 300 ] || die "$md has $1 $value, not $2: $(cat /proc/mdstat)"
    usleep 100000
  done
}

# The speed of everything from now on, in KiB/s: slow enough to be seen, or as fast as it gets.
slowly() { echo 1000 >/proc/sys/dev/raid/speed_limit_max; }
fast() { echo 1000000 >/proc/sys/dev/raid/speed_limit_max; }

finish() {
  fast
  reach sync_action idle
}

# Removes the links, too, as udev does.
stop() {
  mdadm --quiet --stop "/dev/$md"
  rm -rf /dev/md
}

manage() { mdadm --quiet "/dev/$md" "$@"; }

# execute PLUGIN:OBJECT:OPERATION[:NAME=VALUE]...: through the service.
execute() {
  echo "  $1"
  service --allow-changes --execute "$1" /lib/service || die "$1 is not done"
}

# create_array MEMBER...: through the service, by a document that names the drives by the identifiers they have now.
create_array() {
  local drive
  service --json /lib/service >/tmp/objects
  {
    echo '<ArrayConfiguration><Containers><Container>'
    for drive in "$@"; do
      grep '^{"plugin":"mdraid"' /tmp/objects | grep "\"$drive\"" |
        sed 's/.*"object_id":\([0-9]*\),.*/<Drive ObjectID="\1" StartAddress="0"\/>/'
    done
    echo '</Container></Containers></ArrayConfiguration>'
  } >/tmp/array.xml
  [ "$(grep -c ObjectID /tmp/array.xml)" = $# ] || die "not each of $* is in the inventory: $(cat /tmp/array.xml)"
  execute "mdraid:Linux software RAID:CREATE_LOGICAL_DRIVE:CONFIGURATION=/tmp/array.xml:RAID_LEVEL=$kind:NAME=${name:-$md}"
  [ -z "$name" ] || md=$(cd /sys/block && echo md*)
}

# create FIRST MEMBER...: an array of level $level, for which the kernel does FIRST, slowly.
create() {
  local first=$1
  shift
  slowly
  create_array "$@"
  reach sync_action "$first"
  step "$level: created, $first runs"
  finish
  step "$level: whole"
}

# lose_and_rebuild FAILING REPLACEMENT
lose_and_rebuild() {
  execute "mdraid:${1##*/}:MAKE_OFFLINE"
  reach degraded 1
  step "$level: degraded, ${1##*/} failed"
  execute "mdraid:${1##*/}:REMOVE_DISK"
  step "$level: degraded, ${1##*/} removed"
  slowly
  execute "mdraid:$md:REPLACE_MISSING:OS_DEVICE=$2"
  reach sync_action recover
  step "$level: ${2##*/} is rebuilt"
  execute "mdraid:$md:PAUSE_REBUILD"
  reach sync_action frozen
  step "$level: the rebuild is frozen"
  execute "mdraid:$md:CONTINUE_REBUILD"
  reach sync_action recover
  fast
  reach degraded 0
  finish
  step "$level: rebuilt"
}

# take_spare SPARE FAILING
take_spare() {
  mdadm --zero-superblock "$1"
  execute "mdraid:$md:CREATE_DEDICATED_HOTSPARE:OS_DEVICE=$1"
  step "$level: with a spare"
  slowly
  execute "mdraid:${2##*/}:MAKE_OFFLINE"
  reach sync_action recover
  step "$level: the spare is taken over"
  fast
  reach degraded 0
  finish
  step "$level: the spare has taken over"
  execute "mdraid:${2##*/}:REMOVE_DISK"
  mdadm --zero-superblock "$2"
}

check() {
  slowly
  execute "mdraid:$md:START_CHECK" >/tmp/check &
  reach sync_action check
  step "$level: checked"
  fast
  wait $! || die "the check is not done: $(cat /tmp/check)"
  reach sync_action idle
  cat /tmp/check
}

# reassemble MEMBER...: read-only, stopped, half assembled, assembled again.
reassemble() {
  mdadm --quiet --readonly "/dev/$md"
  reach array_state readonly
  step "$level: read-only"
  mdadm --quiet --readwrite "/dev/$md"
  stop
  step "$level: stopped"
  mdadm --quiet --incremental "$1"
  md=$(cd /sys/block && echo md*) # under the name that mdadm gives it
  reach array_state inactive
  step "$level: half assembled"
  stop
  mdadm --quiet --assemble "/dev/${name:+md/}${name:-$md}" "$@"
  md=$(cd /sys/block && echo md*)
  reach raid_disks "$disks"
  step "$level: assembled again"
}

# destroy MEMBER...
destroy() {
  stop
  mdadm --quiet --zero-superblock "$@"
}

scenario_raid1() {
  level=raid1 kind=RAID1 disks=2
  create resync "$m1" "$m2"
  lose_and_rebuild "$m2" "$m3"
  take_spare "$m2" "$m1"
  check
  reassemble "$m2" "$m3"
  destroy "$m2" "$m3"
}

scenario_raid5() {
  level=raid5 kind=RAID5 disks=3
  create recover "$m1" "$m2" "$m3"
  lose_and_rebuild "$m2" "$m4"
  take_spare "$m2" "$m1"
  check
  reassemble "$m2" "$m3" "$m4"
  manage --fail "$m2"
  manage --fail "$m3" || true # done, and told as a failure since the array is lost
  step "$level: failed"
  destroy "$m2" "$m3" "$m4"
}

scenario_raid6() {
  level=raid6 kind=RAID6 disks=4
  create resync "$m1" "$m2" "$m3" "$m4"
  manage --fail "$m2"
  reach degraded 1
  step "$level: one failed"
  manage --fail "$m4"
  reach degraded 2
  step "$level: two failed"
  manage --remove "$m2" "$m4"
  slowly
  echo frozen >"/sys/block/$md/md/sync_action"
  manage --add "$m5"
  manage --add "$m6"
  echo idle >"/sys/block/$md/md/sync_action"
  reach sync_action recover
  step "$level: two are rebuilt at once"
  fast
  reach degraded 0
  finish
  step "$level: rebuilt"
  mdadm --zero-superblock "$m2" "$m4"
  check
  reassemble "$m1" "$m3" "$m5" "$m6"
  destroy "$m1" "$m3" "$m5" "$m6"
}

scenario_raid10() {
  level=raid10 kind=RAID10 disks=4 name=data
  create resync "$m1" "$m2" "$m3" "$m4"
  lose_and_rebuild "$m2" "$m5"
  take_spare "$m2" "$m4"
  mdadm --quiet --zero-superblock "$m6"
  manage --add "$m6"
  slowly
  manage --replace "$m1" --with "$m6"
  reach sync_action recover
  step "$level: ${m1##*/} is replaced while it works"
  finish
  step "$level: ${m1##*/} is replaced"
  manage --remove "$m1"
  mdadm --zero-superblock "$m1"
  check
  reassemble "$m2" "$m3" "$m5" "$m6"
  destroy "$m2" "$m3" "$m5" "$m6"
}

# Of levels without redundancy, the last member vanishes in the end.
without_redundancy() {
  disks=2
  create_array "$m1" "$m2"
  reach raid_disks 2
  step "$level: created"
  reassemble "$m1" "$m2"
  destroy "$m1" "$m2"
  add_debug_drive
  mdadm --create "/dev/$md" --quiet --run --level="$level" --raid-devices=2 "$m1" "$debug_drive"
  echo 1 >"/sys/block/${debug_drive##*/}/device/delete"
  dd if=/dev/zero of="/dev/$md" bs=1M oflag=direct 2>/dev/null || true
  reach array_state broken
  step "$level: failed, ${debug_drive##*/} is gone"
  destroy "$m1"
  rmmod scsi_debug
}

scenario_raid0() {
  level=raid0 kind=RAID0
  without_redundancy
}

scenario_linear() {
  level=linear kind=CONCAT
  if modprobe linear; then
    without_redundancy
  else
    echo "This kernel has no linear arrays." | tee linear
  fi
}

# Two arrays on the same drives, of which the second has to wait, and one that waits for the first write.
scenario_waiting() {
  for disk in "$m1" "$m2"; do
    printf 'n\np\n1\n2048\n65535\nn\np\n2\n65536\n131071\nw\n' | fdisk "$disk" >/dev/null 2>&1
  done
  slowly
  mdadm --create /dev/md0 --quiet --run --level=raid1 --raid-devices=2 "${m1}1" "${m2}1"
  mdadm --create /dev/md1 --quiet --run --level=raid1 --raid-devices=2 "${m1}2" "${m2}2"
  mdadm --create /dev/md2 --quiet --run --level=raid1 --raid-devices=2 --readonly "$m3" \
    --write-mostly "$m4"
  md=md1
  reach sync_completed delayed
  step "one array runs, one waits for it, one for the first write"
  fast
  mdadm --quiet --readwrite /dev/md2
  for md in md0 md1 md2; do reach resync_start none; done
  step "all three are whole"
  mdadm --quiet --stop /dev/md0 /dev/md1 /dev/md2
  mdadm --quiet --zero-superblock "${m1}1" "${m2}1" "${m1}2" "${m2}2" "$m3" "$m4"
  for disk in "$m1" "$m2"; do
    dd if=/dev/zero of="$disk" bs=512 count=1 2>/dev/null
    blockdev --rereadpt "$disk"
  done
}

# self_test TYPE DRIVE NAME: through the service; NAME is what smartctl calls it.
self_test() {
  execute "smartctl:$2:START_VERIFY:TYPE=$1"
  smartctl --log=selftest "$2" | grep "^# 1 *$3 .* Completed without error" || die "$2 has no $1 self-test in its log"
}

scenario_drives() {
  self_test short "$(node_of TESTDISK)" Short
  self_test long "$(node_of TESTSSD)" Extended
  step "drives: after self-tests"
  add_debug_drive
  # These metadata keep no list of bad blocks, which would let it go on.
  mdadm --create "/dev/$md" --quiet --run --level=raid1 --raid-devices=2 --assume-clean --metadata=0.90 \
    "$debug_drive" "$m1"
  echo writemostly >"/sys/block/$md/md/dev-${m1##*/}/state" # so that the other one is read
  step "drives: a mirror on one with sectors that cannot be read"
  dd if="/dev/$md" of=/dev/null bs=1M count=8 iflag=direct 2>/dev/null
  reach degraded 1
  step "drives: it was read, and the drive failed"
  predict_failure
  sg_raw "$debug_drive" 00 00 00 00 00 00 2>/dev/null || true # takes the unit attention that comes with it
  step "drives: one predicts its failure"
  destroy "$m1" "$debug_drive"
  rmmod scsi_debug
}

mkdir -p /run/mdadm
hostname trial
echo 500 >/proc/sys/dev/raid/speed_limit_min
for disk in /sys/block/vd*; do
  eval "$(cat "$disk/serial")=/dev/${disk##*/}"
done
step "no array"
while read -r scenario; do
  md=md0 name=
  "scenario_$scenario" </dev/null
done </scenarios
