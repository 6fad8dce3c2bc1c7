# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=dash
# Runs in the guest: rebuilds that begin at once, and what the service tells of them, looking every second: lines of
# watch.json, each after the time since the boot. rebuilds.tsv has the arrays, the time at which each was whole, how its
# pace was, and what slowed it.

# rebuild MD SLICE PACE TEXT: in the background
rebuild() {
  local end
  add "$1" "$2"
  (
    until [ "$(cat "/sys/block/$1/md/degraded")" = 0 ]; do usleep 100000; done
    end=$(now)
    printf '%s\t%s\t%s\t%s\n' "$1" "$end" "$3" "$4" >>rebuilds.tsv
  ) &
  rebuilding="$rebuilding $!"
}

# Above the minimum md waits for idle disks, which hides how slow they are.
echo 50000 >/proc/sys/dev/raid/speed_limit_min
on_disk pool
slices a 2 200 50
slices b 2 160 400
slices c 3 150 50
# shellcheck disable=SC2046 # a list of delays
slices d 2 160 $(zones 330 0.6)
MISSING=2 array md1 1 a 2 200
MISSING=2 array md2 1 b 2 160
MISSING=3 array md3 5 c 3 150
MISSING=2 array md4 1 d 2 160
for md in md1 md3; do set_md $md sync_speed_min 1000; done
set_md md1 sync_speed_max 2000
set_md md3 sync_speed_max 1500
mkdir /lib/watched
cp /lib/service/mdraid.so /lib/watched
mkfifo /tmp/watch
service --json --watch=1 /lib/watched >/tmp/watch &
watching=$!
while read -r line; do echo "$(now) $line"; done </tmp/watch >watch.json &

rebuilding=
rebuild md1 a2 steady "RAID 1, limited to 2000 KiB/s"
rebuild md2 b2 steady "RAID 1, an access takes 400 ms"
rebuild md3 c3 steady "RAID 5 of 3, limited to 1500 KiB/s"
rebuild md4 d2 falling "RAID 1, an access takes 330 ms outside, 550 ms inside"
# shellcheck disable=SC2086 # several words
wait $rebuilding
kill -INT $watching
wait
cat rebuilds.tsv
