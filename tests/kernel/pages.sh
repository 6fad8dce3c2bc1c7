# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=dash disable=SC2154 # $debug_drive comes from common.sh
# Runs in the guest: raw pages of its drives as DRIVE.PAGE.bin, beside them DRIVE.smartctl.json and .txt on the same
# drive in the same state. absent.tsv lists what a drive or its driver refused, with the reason; drives.tsv the drives.

# keep FILE COMMAND...: what the command prints, as a file; a failure goes to absent.tsv.
keep() {
  local file=$1
  shift
  if "$@" >"$file" 2>/tmp/error && [ -s "$file" ]; then return; fi
  rm -f "$file"
  printf '%s\t%s\n' "$file" "$(grep -v '^$' /tmp/error | tail -n 1)" >>absent.tsv
}

# must SIZE FILE...: a page that the drive cannot be without.
must() {
  local size=$1 file
  shift
  for file in "$@"; do
    [ "$(stat -c %s "$file")" = "$size" ] || die "$file does not have $size bytes"
  done
}

# ask_smartctl DRIVE NODE: what it says of the drive; bits 0 and 1 of its exit code say that it could not read one.
ask_smartctl() {
  local status=0
  smartctl --json=c -x "$2" >"$1.smartctl.json" || status=$?
  smartctl -x "$2" >"$1.smartctl.txt" || status=$((status | $?))
  [ $((status & 3)) = 0 ] || die "smartctl cannot read $1"
}

# answer BYTES NODE CDB...: what a command answers, up to so many bytes.
answer() {
  local bytes=$1
  shift
  sg_raw --binary --request="$bytes" "$@" 2>/tmp/sg_raw && return
  grep -m 1 'Sense key' /tmp/sg_raw >&2
  return 1
}

# sense NAME NODE CDB...: the sense data of a command without data, as a file and in words.
sense() {
  local name=$1
  shift
  sg_raw --verbose "$@" >/tmp/sense 2>&1 || true
  sed -n '/Raw sense data/,/^$/p' /tmp/sense | sed -n 's/^  *\([0-9a-f][0-9a-f] .*\)/\1/p' >/tmp/hex
  sg_decode_sense --file=/tmp/hex --write="sense.$name.bin" >/dev/null # newer ones print nothing beside it
  sg_decode_sense --file=/tmp/hex >"sense.$name.txt"
  [ -s "sense.$name.bin" ] && [ -s "sense.$name.txt" ]
}

read_nvme() {
  dd if=/dev/zero of=/dev/nvme0n1 bs=1M count=24 oflag=direct 2>/dev/null
  dd if=/dev/nvme0n1 of=/dev/null bs=1M count=40 iflag=direct 2>/dev/null
  keep nvme0.error_log.bin nvme get-log /dev/nvme0 --log-id=1 --log-len=64 --raw-binary
  keep nvme0.health.bin nvme get-log /dev/nvme0 --log-id=2 --log-len=512 --raw-binary
  keep nvme0.self_test_log.bin nvme get-log /dev/nvme0 --log-id=6 --log-len=564 --raw-binary
  keep nvme0.endurance_group.bin nvme get-log /dev/nvme0 --log-id=9 --log-len=512 --raw-binary
  keep nvme0.id_ctrl.bin nvme id-ctrl /dev/nvme0 --raw-binary
  must 512 nvme0.health.bin
  must 4096 nvme0.id_ctrl.bin
  ask_smartctl nvme0 /dev/nvme0
}

# read_sata DRIVE NODE
read_sata() {
  local page
  smartctl --test=short "$2" >/dev/null
  smartctl --test=long "$2" >/dev/null
  keep "$1.identify.bin" answer 512 "$2" 85 08 0e 00 00 00 01 00 00 00 00 00 00 00 ec 00
  keep "$1.smart_data.bin" answer 512 "$2" 85 08 0e 00 d0 00 01 00 00 00 4f 00 c2 00 b0 00
  keep "$1.thresholds.bin" answer 512 "$2" 85 08 0e 00 d1 00 01 00 00 00 4f 00 c2 00 b0 00
  keep "$1.error_log.bin" answer 512 "$2" 85 08 0e 00 d5 00 01 00 01 00 4f 00 c2 00 b0 00
  keep "$1.self_test_log.bin" answer 512 "$2" 85 08 0e 00 d5 00 01 00 06 00 4f 00 c2 00 b0 00
  for page in 00 01 03 04 05 07; do
    keep "$1.device_statistics_$page.bin" answer 512 "$2" 85 09 0e 00 00 00 01 00 04 00 "$page" 00 00 00 2f 00
  done
  must 512 "$1.identify.bin" "$1.smart_data.bin" "$1.thresholds.bin" "$1.self_test_log.bin"
  sense "smart_status.$1" "$2" 85 06 20 00 da 00 00 00 00 00 4f 00 c2 00 b0 00
  ask_smartctl "$1" "$2"
}

# read_scsi DRIVE NODE
read_scsi() {
  local page
  keep "$1.inquiry.bin" answer 96 "$2" 12 00 00 00 60 00
  for page in 00 02 03 05 0d 10 11 15 2f; do # current cumulative values
    keep "$1.log_$page.bin" answer 4096 "$2" 4d 00 "$(printf %x $((0x40 | 0x$page)))" 00 00 00 00 10 00 00
  done
  keep "$1.log_0d_01.bin" answer 4096 "$2" 4d 00 4d 01 00 00 00 10 00 00
  ask_smartctl "$1" "$2"
}

: >absent.tsv
cat >drives.tsv <<DRIVES
nvme0	QEMU's NVMe drive, 24 MB written and 40 MB read
sata0	QEMU's SATA disk after a short and an extended self-test
sata1	the same as a solid-state drive
scsi0	QEMU's SCSI disk, which has no log pages
scsi1	the kernel's scsi_debug
scsi2	the same, made to predict its failure
DRIVES

read_nvme
read_sata sata0 "$(node_of TESTDISK)"
read_sata sata1 "$(node_of TESTSSD)"
read_scsi scsi0 "$(node_of 'QEMU HARDDISK')"

DEBUG=/sys/bus/pseudo/drivers/scsi_debug
add_debug_drive
node=$debug_drive
read_scsi scsi1 "$node"
must 16 scsi1.log_0d.bin
must 11 scsi1.log_2f.bin

# In both formats: an unreadable sector, a field that the command must not have, a drive that is stopped.
for format in fixed descriptor; do
  [ $format = fixed ] || echo 1 >$DEBUG/dsense
  sense medium_error.$format "$node" --request=512 28 00 00 00 12 34 00 00 01 00
  sense illegal_field.$format "$node" --request=512 4d 00 42 00 00 00 00 02 00 00
  sg_raw "$node" 1b 00 00 00 00 00 2>/dev/null
  sense not_ready.$format "$node" 00 00 00 00 00 00
  sg_raw "$node" 1b 00 00 00 01 00 2>/dev/null
done
echo 0 >$DEBUG/dsense

predict_failure
sense unit_attention.fixed "$node" 00 00 00 00 00 00
read_scsi scsi2 "$node"
