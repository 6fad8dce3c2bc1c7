#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares what the example service told of arrays and drives with what mdadm, the kernel and smartctl did.

usage: compare_inventory.py STEPS PAGES PITOOL

STEPS holds what tests/kernel/scenarios.sh leaves, a folder a step; PAGES what tests/kernel/pages.sh does, of which the
sense data are compared. Prints the fields that differ and their number; ends with 1 when there are any.
"""

import json
import pathlib
import re
import subprocess
import sys

from inventory import read_inventory

LEVELS = {"linear": "CONCAT", "raid0": "RAID0", "raid1": "RAID1", "raid4": "RAID4", "raid5": "RAID5",
          "raid6": "RAID6", "raid10": "RAID10"}
SPARED = {"linear": 0, "raid0": 0, "raid4": 1, "raid5": 1, "raid6": 2}  # members that a level can do without
WAITING = {"VERIFYINGFIXING": "PAUSED", "REBUILDING": "REBUILD_PAUSED", "CHECKING": "CHECK_PAUSED"}
ACTIVITIES = {"resync": "VERIFYINGFIXING", "recover": "REBUILDING", "check": "CHECKING", "repair": "VERIFYINGFIXING",
              "reshape": "MIGRATING"}
MDADM_ACTIVITIES = {"resyncing": "VERIFYINGFIXING", "recovering": "REBUILDING", "checking": "CHECKING",
                    "reshaping": "MIGRATING"}
PROGRESS = {"VERIFYINGFIXING": "VERIFYFIX_PROGRESS", "REBUILDING": "REBUILD_PROGRESS", "CHECKING": "CHECK_PROGRESS"}
SECTOR = 512


class Tally:
    def __init__(self):
        self.step = self.place = ""
        self.compared = 0
        self.differences = {}  # text to steps

    def compare(self, field, ours, source, *theirs):
        """What the service told has to be what the source said before or after it."""
        self.compared += 1
        if ours not in theirs:
            said = " or ".join(dict.fromkeys(str(value) for value in theirs))
            text = f"{self.place}: {field} is {ours}, but {said} by {source}"
            self.differences.setdefault(text, []).append(self.step)

    def differing(self):
        return sum(len(steps) for steps in self.differences.values())

    def compare_size(self, field, ours, source, size):
        near = ours is not None and abs(ours - size) <= size / 2**23  # the model has it as a float
        self.compare(field, size if near else ours, source, size)


class Array:
    """What mdadm and sysfs say of one array at one moment."""

    def __init__(self, folder, name):
        self.sysfs = {}
        for line in (folder / f"{name}.sysfs").read_text().splitlines():
            path, value = line.split(":", 1)
            self.sysfs[path.replace("/..", "")] = value
        text = (folder / f"{name}.detail").read_text()
        self.mdadm = dict(re.findall(r"^ *(\S.*?) : (.*?) *$", text, re.MULTILINE))
        self.export = dict(re.findall(r"^(\w+)=(.*)$", (folder / f"{name}.export").read_text(), re.MULTILINE))
        rows = [row.split() for row in text.partition("RaidDevice")[2].splitlines()[1:] if row and "removed" not in row]
        self.members = {self.find_name(row): row for row in rows}
        self.states = self.mdadm["State"].split(", ")
        self.is_running = "inactive" not in self.states

    def find_name(self, row):
        """Of a drive that is gone, mdadm knows the slot alone."""
        if row[-1] != "missing":
            return row[-1].removeprefix("/dev/")
        return next(path.split("/")[1][4:] for path, value in self.sysfs.items()
                    if re.fullmatch("md/dev-.*/slot", path) and value == row[3])

    def md(self, attribute):
        return self.sysfs.get("md/" + attribute, "")

    def status(self):
        level, missing = self.md("level"), int(self.md("degraded") or 0)
        if not self.is_running:
            return "OFFLINE"
        if "FAILED" in self.states or "broken" in self.states:
            return "FAILED"
        if "degraded" in self.states:
            more = missing < SPARED.get(level, int(self.md("raid_disks")) - 1) and level != "raid10"
            return "PARTIALLY_DEGRADED" if more else "DEGRADED"
        return "OPERATIONAL"

    def activity(self):
        """By sysfs."""
        action = self.md("sync_action")
        if action == "frozen" and any("rebuilding" in row for row in self.members.values()):
            return "REBUILD_PAUSED"
        if self.md("array_state").startswith("read") and self.md("resync_start") != "none":
            return "PAUSED"
        activity = ACTIVITIES.get(action, "IDLE")
        return WAITING[activity] if self.md("sync_completed") == "delayed" else activity

    def mdadm_activity(self):
        for state in self.states:
            word, *wait = state.split()
            if word in MDADM_ACTIVITIES:
                return WAITING[MDADM_ACTIVITIES[word]] if wait else MDADM_ACTIVITIES[word]
        return "IDLE"

    def percent(self):
        return next((int(value.split("%")[0]) for key, value in self.mdadm.items() if key.endswith(" Status")), None)

    def member_status(self, name):
        words = self.members[name][4:]
        if not self.is_running:
            return "OFFLINE"
        if "faulty" in words or "missing" in words:
            return "FAILED"
        if self.is_replacement(name):
            return "COPY_BACK" if "rebuilding" in words else "OPERATIONAL"
        if "rebuilding" in words:
            return "REBUILDING" if self.md("sync_action") == "recover" else "REBUILD_PAUSED"
        return "DEDICATED_HOTSPARE" if "spare" in words else "OPERATIONAL"

    def is_replacement(self, name):
        return "replacement" in self.md(f"dev-{name}/state").split(",")

    def member_usage(self, name):
        slot = self.members[name][3]
        if self.is_replacement(name):
            return f"replacement for slot {slot}"
        failed = "gone" if "missing" in self.members[name] else "failed"
        by_status = {"OFFLINE": "not in use", "FAILED": failed, "DEDICATED_HOTSPARE": "spare",
                     "OPERATIONAL": f"slot {slot}"}
        usage = by_status.get(self.member_status(name), f"rebuilding slot {slot}")
        return usage + ", write-mostly" if "writemostly" in self.members[name] else usage


def compare_array(tally, ours, before, after):
    """Each moment counts that the service may have seen."""
    values, moments = ours["values"], (before, after)

    def compare(field, source, theirs):
        tally.compare(field, values.get(field), source, *(theirs(moment) for moment in moments))

    compare("NAME", "mdadm", lambda array: array.export.get("MD_DEVNAME", values["OS_DEVICE"].removeprefix("/dev/")))
    compare("RAID_LEVEL", "sysfs", lambda array: LEVELS.get(array.md("level"), "UNKNOWN"))
    compare("STATUS", "mdadm", Array.status)
    members = {part["values"]["NAME"]: part["values"] for part in ours["parts"]}
    tally.compare("members", sorted(members), "mdadm", *(sorted(array.members) for array in moments))
    tally.compare("number of members", str(len(members)), "mdadm", *(array.mdadm["Total Devices"] for array in moments))
    if after.is_running:
        compare("RAID_LEVEL", "mdadm", lambda array: LEVELS.get(array.mdadm["Raid Level"]))
        tally.compare_size("LOGICAL_SIZE", values.get("LOGICAL_SIZE"), "sysfs", int(after.sysfs["size"]) * SECTOR)
        tally.compare_size("LOGICAL_SIZE", values.get("LOGICAL_SIZE"), "mdadm",
                           int(after.mdadm["Array Size"].split()[0]) * 1024)
        if "Chunk Size" in after.mdadm:
            tally.compare_size("STRIPESIZE", values.get("STRIPESIZE"), "mdadm",
                               int(after.mdadm["Chunk Size"].removesuffix("K")) * 1024)
        compare("ACCESS_MODE", "sysfs",
                lambda array: "READ_ONLY" if array.md("array_state") in ("readonly", "read-auto") else "READ_WRITE")
        compare("MISSING_DRIVES", "sysfs", lambda array: array.md("degraded") or None)
        compare("ACTIVITY", "sysfs", Array.activity)
        if "frozen" not in (before.md("sync_action"), after.md("sync_action")):
            compare("ACTIVITY", "mdadm", Array.mdadm_activity)
        compare_progress(tally, values, before, after)
    for name in members:
        compare_member(tally, name, members[name], [array for array in moments if name in array.members])
    for field, statuses in (("Failed Devices", ["FAILED"]),
                            ("Spare Devices", ["DEDICATED_HOTSPARE", "REBUILDING", "REBUILD_PAUSED", "COPY_BACK"])):
        if field in after.mdadm and after.is_running:
            count = sum(member["STATUS"] in statuses and member["USAGE"] != "gone" for member in members.values())
            tally.compare(field, str(count), "mdadm", *(array.mdadm[field] for array in moments))


def compare_progress(tally, values, before, after):
    told = {field: float(value) for field, value in values.items() if field in PROGRESS.values()}
    bounds = [array.percent() for array in (before, after)]
    if None not in bounds:
        low, ours, high = bounds[0], told.get(PROGRESS[before.activity()], -1), bounds[1] + 1
        tally.compare("progress", ours if low <= ours < high else f"{ours}, outside", "mdadm", ours, f"{low} to {high}")
    elif not any(bounds):
        tally.compare("progress", told, "mdadm", {})
    tally.compare("REMAINING_TIME", "REMAINING_TIME" in values, "mdadm", *(bound is not None for bound in bounds))


def compare_member(tally, name, values, moments):
    place, tally.place = tally.place, f"{tally.place} member {name}"
    tally.compare("OS_DEVICE", values.get("OS_DEVICE"), "mdadm", "/dev/" + name)
    tally.compare("STATUS", values["STATUS"], "mdadm", *(array.member_status(name) for array in moments))
    tally.compare("USAGE", values["USAGE"], "mdadm", *(array.member_usage(name) for array in moments))
    for array in moments[-1:]:
        device = f"dev-{name}/"
        tally.compare_size("CONFIGURABLE_SIZE", values.get("CONFIGURABLE_SIZE"), "sysfs", int(array.md(device + "size")) * 1024)
        tally.compare("MEDIA_ERROR_COUNT", values.get("MEDIA_ERROR_COUNT"), "sysfs", array.md(device + "errors"))
        medium = {"1": "HDD", "0": "SSD"}.get(array.md(device + "block/queue/rotational"))
        tally.compare("MEDIA_TYPE", values.get("MEDIA_TYPE"), "sysfs", medium)
    tally.place = place


def compare_arrays(tally, step, objects):
    def read(moment):
        folder = step / moment
        arrays = {path.stem: Array(folder, path.stem) for path in folder.glob("*.detail")}
        return {name: array for name, array in arrays.items() if array.md("array_state") != "clear"}

    before, after = read("before"), read("after")
    adapter = next(each for each in objects if each["plugin"] == "mdraid" and each["kind"] == "adapter")
    parts = {part["values"]["OS_DEVICE"].removeprefix("/dev/"): part for part in adapter["parts"]}
    ours = {name: part for name, part in parts.items() if part["kind"] == "array"}
    tally.place = "mdraid"
    tally.compare("arrays", sorted(ours), "sysfs", sorted(before), sorted(after))
    compare_free_drives(tally, {name: part for name, part in parts.items() if name not in ours}, step / "after" / "disks")
    tally.compare("CUR_LOGICAL_DRIVES", adapter["values"]["CUR_LOGICAL_DRIVES"], "sysfs", str(len(after)))
    for name in ours.keys() & before.keys() & after.keys():
        tally.place = f"{name}"
        compare_array(tally, ours[name], before[name], after[name])


def compare_free_drives(tally, ours, path):
    """Free is a drive with a size, without users and without partitions."""
    lines = path.read_text().splitlines()
    sysfs = dict(line.removeprefix("./").split(":") for line in lines if ":" in line)
    used = {line.split("/")[1] for line in lines if "/holders/" in line or "/partition" in line}
    drives = {line.split("/")[1] for line in lines if line.endswith("/device")}
    theirs = sorted(name for name in drives - used if sysfs[f"{name}/size"] != "0")
    tally.compare("free drives", sorted(ours), "sysfs", theirs)
    for name in ours.keys() & set(theirs):
        values = ours[name]["values"]
        tally.place = f"free drive {name}"
        tally.compare_size("CONFIGURABLE_SIZE", values.get("CONFIGURABLE_SIZE"), "sysfs", int(sysfs[f"{name}/size"]) * SECTOR)
        medium = {"1": "HDD", "0": "SSD"}.get(sysfs[f"{name}/queue/rotational"])
        tally.compare("MEDIA_TYPE", values.get("MEDIA_TYPE"), "sysfs", medium)
        tally.compare("STATUS", values["STATUS"], "sysfs", "AVAILABLE")
    tally.place = "mdraid"


def compare_drive(tally, ours, report, sysfs):
    values = ours["values"]
    scsi = report["device"]["protocol"] == "SCSI"
    nvme = report.get("nvme_smart_health_information_log", {})
    reports = report.get("scsi_environmental_reports", {})
    trim = report.get("trim", {}).get("supported")
    rate = report.get("rotation_rate", 0 if nvme or trim else None)  # what it trims is flash
    if scsi and rate == 0 and sysfs["rotational"] != "0":
        rate = None  # smartctl also writes 0 where a SCSI drive reports nothing
    temperature = report.get("temperature", reports.get("temperature_1", {})).get("current")
    trip = report.get("scsi_temperature", report.get("temperature", {})).get("drive_trip")  # before 7.4 there
    if temperature == 0 and trip == 0:
        temperature = None  # likewise
    verdict = report.get("smart_status", {})
    passed = verdict.get("passed")
    if verdict.get("scsi", {}).get("ascq") == 0xFF:  # a prediction that was but asked for as a test
        passed = True
    for field, theirs in (
        ("NAME", report.get("scsi_model_name" if scsi else "model_name")),
        ("SERIAL_NUMBER", report.get("serial_number")),
        ("FIRMWARE_VERSION", report.get("scsi_revision" if scsi else "firmware_version")),
        ("TEMPERATURE", temperature),
        ("POWERON_HOURS", report.get("power_on_time", {}).get("hours")),
        ("RPM", rate or None),
        ("MEDIA_TYPE", None if rate is None else "HDD" if rate else "SSD"),
        ("SMART_FLAGGED", {True: "NO", False: "YES", None: "UNKNOWN"}[passed]),
        ("STATUS", "AVAILABLE_SMART" if passed is False else "AVAILABLE"),
        ("BLOCK_SIZE", report.get("logical_block_size")),
        ("RATED_ENDURANCE_PERCENT", nvme.get("percentage_used")),
        ("REMAINING_RESERVE_SPACE", nvme.get("available_spare")),
    ):
        tally.compare(field, values.get(field), "smartctl", theirs if theirs is None else str(theirs))
    if "user_capacity" in report:
        tally.compare_size("PHYSICAL_SIZE", values.get("PHYSICAL_SIZE"), "smartctl", report["user_capacity"]["bytes"])
    for field, name in (("NAME", "model"), ("SERIAL_NUMBER", "serial"), ("FIRMWARE_VERSION", "firmware_rev"),
                        ("FIRMWARE_VERSION", "rev")):
        if name in sysfs:
            theirs = sysfs[name].strip()
            ends = (values.get(field) or "").endswith(theirs)
            tally.compare(field, theirs if ends else values.get(field), "sysfs", theirs)


def compare_drives(tally, step, objects):
    reports = {path.stem: json.loads(path.read_text()) for path in step.glob("*.smartctl")}
    sysfs = {name: dict(re.findall(r"(\w+):(.*)$", (step / f"{name}.sysfs").read_text(), re.MULTILINE)) for name in reports}
    adapters = [each for each in objects if each["plugin"] == "smartctl" and each["kind"] == "adapter"]
    ours = {part["values"]["OS_DEVICE"].removeprefix("/dev/"): (part, each) for each in adapters for part in each["parts"]}
    tally.place = "smartctl"
    tally.compare("drives", sorted(ours), "smartctl", sorted(reports))
    for name in ours.keys() & reports.keys():
        tally.place = f"{name}"
        drive, adapter = ours[name]
        protocol = {"ATA": "SATA", "SCSI": "SAS", "NVMe": "NVME"}[reports[name]["device"]["protocol"]]
        tally.compare("PROTOCOL", adapter["values"]["PROTOCOL"], "smartctl", protocol)
        compare_drive(tally, drive, reports[name], sysfs[name])


def compare_sense(tally, folder, pitool):
    """sg_decode_sense puts the same into words."""
    for path in sorted(folder.glob("sense.*.bin")):
        tally.step, tally.place = "pages", path.stem
        output = subprocess.run([pitool, "sense", "--json", "--data", path.read_bytes().hex(" ")], check=True,
                                capture_output=True, text=True).stdout
        ours, text = json.loads(output), path.with_suffix(".txt").read_text()
        layout, key = re.search(r"(Fixed|Descriptor) format, .*Sense key: (.*?) *$", text, re.MULTILINE).groups()
        additional = re.search(r"Additional sense: (.*?) *$", text, re.MULTILINE)[1]
        information = re.search(r"Info.*\[(\d+)\]", text)
        tally.compare("layout", ours["layout"], "sg_decode_sense", layout.lower())
        tally.compare("key", ours["key_text"], "sg_decode_sense", key.lower())
        tally.compare("additional sense", ours["additional_text"], "sg_decode_sense", additional.lower())
        tally.compare("information", ours["information"], "sg_decode_sense", int(information[1]) if information else None)


def compare_step(tally, step):
    before = tally.compared, tally.differing()
    objects = read_inventory(step / "inventory.json")
    tally.step, tally.place = step.name, "service"
    tally.compare("errors", (step / "errors").read_text(), "nothing", "")
    compare_arrays(tally, step, objects)
    compare_drives(tally, step, objects)
    title = (step / "title").read_text().strip()
    print(f"{step.name} {title}: {tally.compared - before[0]} fields, {tally.differing() - before[1]} differ")


def main():
    if len(sys.argv) != 4:
        sys.exit("usage: compare_inventory.py STEPS PAGES PITOOL")
    steps, pages, pitool = map(pathlib.Path, sys.argv[1:])
    tally = Tally()
    folders = sorted(path.parent for path in steps.glob("*/title"))
    for step in folders:
        compare_step(tally, step)
    compare_sense(tally, pages, pitool)
    for text, places in tally.differences.items():
        print(f"differs {len(places)} times, first in {places[0]}: {text}")
    print(f"{len(folders)} steps, {tally.compared} fields compared, {tally.differing()} differ")
    sys.exit(tally.differences != {} or not folders)


if __name__ == "__main__":
    main()
