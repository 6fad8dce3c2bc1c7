# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=dash disable=SC2154 # $base comes from common.sh
# Runs in the guest: records rebuilds, resyncs and checks of md arrays, a file each. Its first line says what happens,
# the second names the columns, then comes about a sample a second. Position, total, finish and speed are those of
# /proc/mdstat, the finish in steps of a tenth of a minute; sync_completed is the checkpoint of that name, in sectors. "-"
# is what the kernel does not say at that moment. The last line, "done", has the time at which nothing was left to do.

# wait_until SECONDS after $started
wait_until() { sleep "$(awk -v end="$1" -v start="$started" '{ left = end - ($1 - start); print (left > 0 ? left : 0) }' /proc/uptime)"; }

# sample MD START: a line of a curve; its state is "none" where the array has nothing to do.
sample() {
  awk -v md="$1" -v start="$2" -v now="$(now)" -v action="$(cat "/sys/block/$1/md/sync_action")" \
    -v completed="$(sed 's/ .*//' "/sys/block/$1/md/sync_completed")" '
    function after(word) { return match($0, word "[0-9.]+") ? substr($0, RSTART + length(word), RLENGTH - length(word)) : "-" }
    BEGIN {
      position = total = finish = speed = "-"
      state = action == "idle" ? "none" : "starting"
      if (completed !~ /^[0-9]+$/) completed = "-"
    }
    $1 == md { mine = 1 }
    NF == 0 { mine = 0 }
    !mine { next }
    match($0, /\([0-9]+\/[0-9]+\)/) {
      split(substr($0, RSTART + 1, RLENGTH - 2), kib, "/")
      position = 2 * kib[1]; total = 2 * kib[2]
      finish = after("finish="); speed = after("speed=")
      state = "running"
    }
    /=DELAYED/ { state = "delayed" }
    /=PENDING/ { state = "pending" }
    END {
      if (action == "frozen") state = "paused"
      printf "%.2f\t%s\t%s\t%s\t%s\t%s\t%s\n", now - start, position, total, finish, speed, state, completed
    }' /proc/mdstat
}

is_none() { case $1 in *none*) ;; *) false ;; esac; }

# record NAME MD TEXT: in the background, from when the array has something to do until it has nothing to do any more.
record() {
  local file=$1.tsv md=$2 start line
  {
    echo "# $3"
    printf 'seconds\tposition_sectors\ttotal_sectors\tkernel_finish_minutes\tkernel_speed_kib\tstate\tsync_completed\n'
  } >"$file"
  line=none
  until ! is_none "$line"; do
    usleep 50000
    [ ! -e "/sys/block/$md/md/sync_action" ] || line=$(sample "$md" "$(now)")
  done
  start=$(now)
  while ! is_none "$line"; do
    line=$(sample "$md" "$start")
    is_none "$line" || echo "$line" >>"$file"
    sleep 1
  done
  awk -v line="$line" '
    $3 ~ /^[0-9]+$/ { total = $3 }
    END { split(line, last); printf "%s\t%s\t%s\t-\t-\tdone\t-\n", last[1], total, total }' "$file" >"/tmp/$md.last"
  cat "/tmp/$md.last" >>"$file"
}

# write_to MD SECONDS: three writers at random places.
write_to() {
  local end blocks
  end=$(($(date +%s) + $2))
  blocks=$(($(cat "/sys/block/$1/size") / 128))
  for _ in 1 2 3; do
    while [ "$(date +%s)" -lt "$end" ]; do
      dd if=/dev/zero of="/dev/$1" bs=64k count=1 seek="$(shuf -i "0-$((blocks - 1))" -n 1)" conv=notrunc oflag=direct 2>/dev/null
    done &
  done
}

# Waits for the curves and stops the arrays, which must be whole by then; the next ones use new slices.
finish_round() {
  wait
  cat /proc/mdstat
  ! grep -Lx 0 /sys/block/md*/md/degraded | grep .
  mdadm --quiet --stop --scan
}

for disk in shared1 shared2; do
  on_disk $disk
  printf 'n\np\n1\n2097152\n2404351\nn\np\n2\n2404352\n2711551\nw\n' | fdisk "$base" >/dev/null 2>&1
  ln -s "${base}1" "/dev/mapper/first${disk#shared}"
  ln -s "${base}2" "/dev/mapper/second${disk#shared}"
done

# shellcheck disable=SC2046 # lists of delays
first_round() {
  on_disk pool
  slices a 2 120 400
  slices b 2 160 100
  slices c 2 120 $(zones 330 0.6)
  slices d 2 120 $(zones 300 0.45)
  slices e 2 120 $(zones 300 0.5)
  record 01-raid1-recovery-steady md1 "RAID1, a disk is replaced; an access takes 400 ms" &
  record 02-raid1-recovery-limited md2 "RAID1, a disk is replaced; an access takes 100 ms, sync_speed_max is 2000" &
  record 03-raid1-recovery-zoned-60 md3 "RAID1, a disk is replaced; an access takes 330 ms outside, 550 ms inside" &
  record 04-raid1-recovery-zoned-45 md4 "RAID1, a disk is replaced; an access takes 300 ms outside, 666 ms inside" &
  record 05-raid1-resync-zoned md5 "RAID1, first resync; an access takes 300 ms outside, 600 ms inside" &
  record 06-raid1-resync-before-delayed md6 "RAID1 on the first partitions of two disks of 3 MB/s, first resync" &
  record 07-raid1-resync-delayed md7 "RAID1 on the second partitions of the same disks, first resync, which the kernel delays until the other is done" &
  MISSING=2 array md1 1 a 2 120
  MISSING=2 array md2 1 b 2 160
  MISSING=2 array md3 1 c 2 120
  MISSING=2 array md4 1 d 2 120
  set_md md2 sync_speed_min 1000
  set_md md2 sync_speed_max 2000
  add md1 a2
  add md2 b2
  add md3 c2
  add md4 d2
  array md5 1 e 2 120
  array md6 1 first 2 150
  array md7 1 second 2 150
  finish_round
}

# shellcheck disable=SC2046 # lists of delays
second_round() {
  on_disk pool 4194304
  slices f 3 100 $(zones 400 0.5)
  slices g 3 140 $(zones 180 0.6)
  slices h 4 300 $(zones 700 0.5)
  slices i 4 110 $(zones 300 0.6)
  slices j 2 90 $(zones 330 0.5)
  slices k 2 240 $(zones 300 0.5)
  MISSING="3 4" array md11 6 i 4 110 --assume-clean
  array md9 5 g 3 140 --assume-clean
  array md13 1 k 2 240 --assume-clean --bitmap=internal --bitmap-chunk=1M
  mdadm --quiet /dev/md13 --fail /dev/mapper/k2 --remove /dev/mapper/k2
  for megabyte in 8 96 184; do dd if=/dev/zero of=/dev/md13 bs=8M seek=$((megabyte / 8)) count=5 oflag=direct 2>/dev/null; done
  record 08-raid5-build-zoned md8 "RAID5 of 3, first build; an access takes 400 ms outside, 800 ms inside" &
  record 09-raid5-check-limit-changes md9 "RAID5 of 3, check; an access takes 180 ms outside, 300 ms inside; sync_speed_max is 1000 from 20 to 35 s" &
  record 10-raid10-resync-zoned md10 "RAID10 of 4, first resync; an access takes 700 ms outside, 1400 ms inside" &
  record 11-raid6-recovery-two-disks md11 "RAID6 of 4, two disks are replaced at once; an access takes 300 ms outside, 500 ms inside" &
  record 12-raid1-resync-pending md12 "RAID1, first resync of an array that is read-only until 10 s; an access takes 330 ms outside, 660 ms inside" &
  record 13-raid1-recovery-bitmap md13 "RAID1, a disk comes back and a bitmap names the 120 MiB to be copied; an access takes 300 ms outside, 600 ms inside" &
  set_md md9 sync_speed_min 1000
  set_md md11 sync_action frozen
  add md11 i3
  add md11 i4
  set_md md11 sync_action idle
  mdadm --quiet /dev/md13 --re-add /dev/mapper/k2
  set_md md9 sync_action check
  started=$(now)
  array md12 1 j 2 90 --readonly
  array md8 5 f 3 100
  array md10 10 h 4 300
  wait_until 10
  mdadm --readwrite /dev/md12
  wait_until 20
  set_md md9 sync_speed_max 1000
  wait_until 35
  set_md md9 sync_speed_max system
  finish_round
}

# shellcheck disable=SC2046 # lists of delays
third_round() {
  on_disk pool 12582912
  slices l 3 100 $(zones 180 0.6)
  slices m 2 90 $(zones 260 0.5)
  slices n 3 100 $(zones 300 0.5)
  slices o 4 120 220
  slices p 4 200 $(zones 500 0.5)
  on_disk shared1
  slices q 1 120 0
  slices r 1 120 0
  on_disk shared2
  slices s 1 120 0
  slices t 1 120 0
  mv /dev/mapper/s1 /dev/mapper/q2
  mv /dev/mapper/t1 /dev/mapper/r2
  MISSING=3 array md14 5 l 3 100
  MISSING=2 array md15 1 m 2 90
  MISSING=3 array md16 5 n 3 100
  array md17 6 o 4 120 --assume-clean
  MISSING=4 array md18 10 p 4 200 --assume-clean
  record 14-raid5-recovery-load-later md14 "RAID5 of 3, a disk is replaced; an access takes 180 ms outside, 300 ms inside; writers from 30 to 60 s" &
  record 15-raid1-recovery-load-bursts md15 "RAID1, a disk is replaced; an access takes 260 ms outside, 520 ms inside; writers from 10 to 18, 30 to 38 and 50 to 58 s" &
  record 16-raid5-recovery-paused md16 "RAID5 of 3, a disk is replaced; an access takes 300 ms outside, 600 ms inside; frozen from 20 to 38 s" &
  record 17-raid6-check-load md17 "RAID6 of 4, check; an access takes 220 ms; writers from 10 to 38 s" &
  record 18-raid10-recovery-load md18 "RAID10 of 4, a disk is replaced; an access takes 500 ms outside, 1000 ms inside; writers until 38 s" &
  record 19-raid1-resync-shared md19 "RAID1, first resync on two disks of 3 MB/s, of which a second array takes its share from 20 s on" &
  record 20-raid1-resync-shared-later md20 "RAID1, first resync on the same disks, begun 20 s later" &
  set_md md16 sync_speed_min 50000
  add md14 l3
  add md15 m2
  add md16 n3
  add md18 p4
  set_md md17 sync_action check
  array md19 1 q 2 120
  started=$(now)
  write_to md18 38
  wait_until 10
  write_to md15 8
  write_to md17 28
  wait_until 20
  array md20 1 r 2 120
  set_md md16 sync_action frozen
  wait_until 30
  write_to md14 30
  write_to md15 8
  wait_until 38
  set_md md16 sync_action idle
  wait_until 50
  write_to md15 8
  finish_round
}

# Above the minimum md waits for idle disks, which hides how slow they are. Load is to be given way to, so it has the
# kernel's own minimum.
echo 50000 >/proc/sys/dev/raid/speed_limit_min
first_round
second_round
echo 1000 >/proc/sys/dev/raid/speed_limit_min
third_round
dmesg | grep -E 'md: .*(done|interrupted)'
