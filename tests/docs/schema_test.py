#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the schemas with the samples, with documents made at random, and with what pitool reads from them.

Usage: schema_test.py PROJECT-FOLDER SCHEMA-FOLDER PITOOL XMLLINT [SEED]
"""

import copy
import json
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.parse
import xml.etree.ElementTree as ET

PROJECT, SCHEMAS = map(pathlib.Path, sys.argv[1:3])
PITOOL, XMLLINT = sys.argv[3:5]
SEED = int(sys.argv[5]) if len(sys.argv) > 5 else random.randrange(2**32)

DOCUMENTS = "configuration-documents.xsd"
STRINGS = "strings.xsd"
LARGEST = 2**64 - 1


def validate(schema, files):
    """By file, what keeps it from being valid, each as "line: element: reason"; an empty list for a valid one."""
    run = subprocess.run([XMLLINT, "--noout", "--nonet", "--schema", SCHEMAS / schema, *files], text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    found = {}
    for file in map(str, files):
        # It writes names as addresses in some versions.
        lines = [line[len(name) + 1:] for name in {file, urllib.parse.quote(file)}
                 for line in run.stdout.splitlines() if line.startswith(f"{name}:")]
        reasons = []
        for line in lines:
            parts = re.fullmatch(r"(\d+): element (\w+): Schemas validity error : (.*)", line)
            reasons.append(f"{parts[1]}: {parts[2]}: {parts[3]}" if parts else line)
        valid = f"{file} validates" in run.stdout
        if valid == bool(reasons):
            raise AssertionError(f"xmllint says of {file}\n{run.stdout}")
        found[file] = reasons
    return found


def gist(reason):
    """The telling part of a reason."""
    place, element, text = reason.split(": ", 2)
    attribute = re.search(r"attribute '(\w+)'", text)
    text = re.sub(r"^Element '\w+'(, attribute '\w+')?: ", "", text)
    text = re.sub(r"(?<=is not accepted by the pattern ).*", "...", text)
    text = re.sub(r"(?<=is not an element of the set ).*", "...", text)
    return f"{place}: {element}{f' {attribute[1]}' if attribute and 'The attribute' not in text else ''}: {text}"


def read_layout(file):
    """What pitool reads from a configuration document, and what it warns of."""
    run = subprocess.run([PITOOL, "layout", "--json", file], text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                         check=True)
    return json.loads(run.stdout), run.stderr


class Folder(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def write(self, name, text):
        path = pathlib.Path(self.folder.name) / name
        path.write_text(text, encoding="utf-8")
        return str(path)

    def reasons(self, schema, text):
        return [gist(reason) for reason in validate(schema, [self.write("document.xml", text)]).popitem()[1]]


# --- Configuration documents

DRIVE = '<Drive ObjectID="1" StartAddress="0" UsedSize="5" IsConfigurable="1" LogicalDrive="0" LogicalOwner="0"/>'
ARRAY = ('<ArrayConfiguration Size="5" Units="21025">\n<Containers><Container>\n' + DRIVE +
         '\n</Container></Containers>\n<LogicalDrives><LogicalDrive ObjectID="2"/></LogicalDrives>\n'
         '</ArrayConfiguration>')
LOGICAL_DRIVE = ('<LogicalDriveConfiguration Size="5" Units="21006" SpanCount="1" SpanSize="1">\n<Containers/>\n'
                 '<GlobalHotSpares><Drive ObjectID="3"/></GlobalHotSpares>\n</LogicalDriveConfiguration>')


class ConfigurationDocuments(Folder):
    def test_samples_are_valid_and_read_without_warning(self):
        samples = [str(path) for path in sorted((PROJECT / "examples/layouts").glob("*.xml"))
                   if path.name != "careless-array.xml"]
        self.assertGreaterEqual(len(samples), 2)
        self.assertEqual(validate(DOCUMENTS, samples), {sample: [] for sample in samples})
        for sample in samples:
            self.assertEqual(read_layout(sample)[1], "")

    def test_careless_sample_is_refused_for_all_that_pitool_warns_of(self):
        text = (PROJECT / "examples/layouts/careless-array.xml").read_text(encoding="utf-8")
        self.assertEqual(self.reasons(DOCUMENTS, text), [
            "3: ArrayConfiguration Size: [facet 'pattern'] The value '931 GB' is not accepted by the pattern ...",
            "3: ArrayConfiguration Units: [facet 'enumeration'] The value '3' is not an element of the set ...",
            "6: Drive StartAddress: [facet 'pattern'] The value '-1' is not accepted by the pattern ...",
            "6: Drive UsedSize: [facet 'pattern'] The value '' is not accepted by the pattern ...",
            "6: Drive IsConfigurable: [facet 'enumeration'] The value 'yes' is not an element of the set ...",
            "7: Drive: The attribute 'StartAddress' is required but missing.",
            "7: Drive: The attribute 'UsedSize' is required but missing.",
            "7: Drive: The attribute 'IsConfigurable' is required but missing.",
            "7: Drive: The attribute 'LogicalDrive' is required but missing.",
            "7: Drive: The attribute 'LogicalOwner' is required but missing.",
            "10: HotSpares: This element is not expected.",
        ])

    def test_broken_documents_are_refused_for_what_is_broken(self):
        self.assertEqual(self.reasons(DOCUMENTS, ARRAY), [])
        self.assertEqual(self.reasons(DOCUMENTS, LOGICAL_DRIVE), [])
        not_expected = "This element is not expected."
        pattern = "[facet 'pattern'] The value '{}' is not accepted by the pattern ..."
        for text, old, new, reason in [
                (ARRAY, ' Size="5"', "", "1: ArrayConfiguration: The attribute 'Size' is required but missing."),
                (ARRAY, ' Units="21025"', "", "1: ArrayConfiguration: The attribute 'Units' is required but missing."),
                (ARRAY, "21025", " 21025",
                 "1: ArrayConfiguration Units: [facet 'enumeration'] The value ' 21025' is not an element of the set ..."),
                (ARRAY, "<LogicalDrives>", '<LogicalDrives/><LogicalDrives>', f"5: LogicalDrives: {not_expected}"),
                (ARRAY, "</ArrayConfiguration>", "<GlobalHotSpares/></ArrayConfiguration>",
                 f"6: GlobalHotSpares: {not_expected}"),
                (ARRAY, "<Drive ", "<Disk ", f"3: Disk: {not_expected} Expected is ( Drive )."),
                (ARRAY, DRIVE, "", "2: Container: Missing child element(s). Expected is ( Drive )."),
                (ARRAY, "<Containers>", "<Containers>text",
                 "2: Containers: Character content other than whitespace is not allowed because the content type is "
                 "'element-only'."),
                (ARRAY, 'UsedSize="5"', 'UsedSize="5 "', "3: Drive UsedSize: " + pattern.format("5 ")),
                (ARRAY, 'UsedSize="5"', 'UsedSize="+5"', "3: Drive UsedSize: " + pattern.format("+5")),
                (ARRAY, 'UsedSize="5"', 'UsedSize="0x5"', "3: Drive UsedSize: " + pattern.format("0x5")),
                (ARRAY, 'UsedSize="5"', 'UsedSize="5" State="1"', "3: Drive: The attribute 'State' is not allowed."),
                (ARRAY, 'IsConfigurable="1"', 'IsConfigurable="true"',
                 "3: Drive IsConfigurable: [facet 'enumeration'] The value 'true' is not an element of the set ..."),
                (ARRAY, 'LogicalDrive ObjectID="2"', "LogicalDrive",
                 "5: LogicalDrive: The attribute 'ObjectID' is required but missing."),
                (LOGICAL_DRIVE, ' SpanCount="1"', "",
                 "1: LogicalDriveConfiguration: The attribute 'SpanCount' is required but missing."),
                (LOGICAL_DRIVE, "<Containers/>", "",
                 "1: LogicalDriveConfiguration: Missing child element(s). Expected is one of ( Containers, "
                 "DedicatedHotSpares, AssociatedLogicalDrives )."),
                (LOGICAL_DRIVE, '<Drive ObjectID="3"/>', '<LogicalDrive ObjectID="3"/>',
                 f"3: LogicalDrive: {not_expected} Expected is ( Drive )."),
                (LOGICAL_DRIVE, "LogicalDriveConfiguration", "Configuration",
                 "1: Configuration: No matching global declaration available for the validation root."),
        ]:
            with self.subTest(old=old, new=new):
                self.assertIn(old, text)
                reasons = self.reasons(DOCUMENTS, text.replace(old, new))
                self.assertEqual(reasons, [reason])

    def test_numbers_are_those_of_64_bits(self):
        values = [0, 1, 9, 10, 10**18, 10**19 - 1, 10**19, LARGEST - 1, LARGEST, LARGEST + 1, LARGEST + 5,
                  LARGEST + 10, 10**20 - 1, 10**20]
        for digits in range(1, 20):
            values += [LARGEST - 10**digits, LARGEST + 10**digits]
        files = {self.write(f"{i}.xml", ARRAY.replace('Size="5"', f'Size="{value}"', 1)): value
                 for i, value in enumerate(values)}
        reasons = validate(DOCUMENTS, files)
        for file, value in files.items():
            self.assertEqual(reasons[file] == [], value <= LARGEST, value)
            if value <= LARGEST:
                layout, warnings = read_layout(file)
                self.assertEqual((layout["size"]["value"], warnings), (value, ""))

    def test_units_are_those_of_the_library(self):
        header = (PROJECT / "include/pi/types.h").read_text(encoding="utf-8")
        enumeration = re.search(r"enum _UNITS[^{]*\{(.*?)\}", header, re.S)[1]
        expected = {number: name for name, number in re.findall(r"(\w+) = (\d+),", enumeration)}
        self.assertEqual(len(expected), 7)
        space = {"xs": "http://www.w3.org/2001/XMLSchema"}
        schema = ET.parse(SCHEMAS / DOCUMENTS).getroot()
        units = schema.findall(".//xs:simpleType[@name='Units']//xs:enumeration", space)
        self.assertEqual({unit.get("value"): unit.findtext(".//xs:documentation", "", space) for unit in units}, expected)

    def test_everything_that_can_be_written_is_explained(self):
        xs = "{http://www.w3.org/2001/XMLSchema}"
        for name in (DOCUMENTS, STRINGS):
            schema = ET.parse(SCHEMAS / name).getroot()
            found = [*schema.iter(f"{xs}enumeration"), *(a for a in schema.iter(f"{xs}attribute"))]
            self.assertTrue(found)
            for part in found:
                self.assertTrue(part.findtext(f"{xs}annotation/{xs}documentation"), ET.tostring(part))


def number(rng):
    return str(rng.choice([0, 1, rng.randrange(10), rng.randrange(2**32), rng.randrange(2**64), LARGEST]))


def random_document(rng):
    """A valid document, and what reading it should give."""
    def reference(name, tag):
        ids = [number(rng) for _ in range(rng.randrange(3))]
        element = ET.Element(name)
        element.extend(ET.Element(tag, ObjectID=one) for one in ids)
        return element, [int(one) for one in ids]

    is_array = rng.random() < 0.5
    root = ET.Element("ArrayConfiguration" if is_array else "LogicalDriveConfiguration")
    root.set("Size", number(rng))
    root.set("Units", rng.choice(["21025", "21003", "21002", "21022", "21026", "21027", "21006"]))
    expected = {"size": int(root.get("Size")), "units": int(root.get("Units")), "containers": []}
    if not is_array:
        for attribute, member in [("SpanCount", "span_count"), ("SpanSize", "span_size")]:
            root.set(attribute, number(rng))
            expected[member] = int(root.get(attribute))
    containers = ET.Element("Containers")
    for _ in range(rng.randrange(3)):
        container = ET.SubElement(containers, "Container")
        drives = []
        for _ in range(rng.randrange(1, 4)):
            values = [number(rng) for _ in range(5)]
            flag = rng.choice("01")
            ET.SubElement(container, "Drive", ObjectID=values[0], StartAddress=values[1], UsedSize=values[2],
                          IsConfigurable=flag, LogicalDrive=values[3], LogicalOwner=values[4])
            drives.append([*map(int, values), flag == "1"])
        expected["containers"].append(drives)
    parts = [containers]
    lists = ([("LogicalDrives", "LogicalDrive", "logical_drives")] if is_array else
             [("GlobalHotSpares", "Drive", "global_hot_spares"), ("DedicatedHotSpares", "Drive", "dedicated_hot_spares"),
              ("AssociatedLogicalDrives", "LogicalDrive", "associated_logical_drives")])
    for name, tag, member in lists:
        expected[member] = []
        if rng.random() < 0.7:
            element, expected[member] = reference(name, tag)
            parts.append(element)
    rng.shuffle(parts)
    root.extend(parts)
    return root, expected


def as_expected(layout):
    """What random_document tells, from the JSON of pitool."""
    found = {key: layout[key] for key in layout if key in ("span_count", "span_size") or "_spares" in key or
             "logical_drives" in key}
    found["size"], found["units"] = layout["size"]["value"], layout["units"]["value"]
    found["containers"] = [[[drive["object_id"], drive["start"]["value"], drive["size"]["value"],
                             drive["logical_drive"], drive["logical_owner"], drive["configurable"]]
                            for drive in container["drives"]] for container in layout["containers"]]
    return found


ODD_VALUES = ["", " ", "-1", "+1", " 1", "1 ", "\t1", "1.0", "0x10", "1e3", "true", "007", str(LARGEST + 1), "0" * 25, "3",
              "two", "21025", "2", "-0", "\u0663"]


def spoil(root, rng):
    """Changes one thing, for the worse or not."""
    elements = list(root.iter())
    element = rng.choice(elements)
    what = rng.randrange(6)
    if what == 0 and element.attrib:
        element.set(rng.choice(list(element.attrib)), rng.choice(ODD_VALUES))
    elif what == 1 and element.attrib:
        del element.attrib[rng.choice(list(element.attrib))]
    elif what == 2:
        element.tag = rng.choice(["Disk", "Drive", "LogicalDrive", "Container", "Containers", "GlobalHotSpares",
                                  "ArrayConfiguration", "LogicalDriveConfiguration"])
    elif what == 3:
        element.set(rng.choice(["Size", "Units", "State", "ObjectID"]), "21025")
    elif what == 4:
        element.append(copy.deepcopy(rng.choice(elements)))
    else:
        element.text = rng.choice([" ", "\n", "text"])


class RandomConfigurationDocuments(Folder):
    COUNT = 60

    def setUp(self):
        super().setUp()
        print(f"seed {SEED}")
        self.rng = random.Random(SEED)

    def test_valid_ones_are_read_as_they_are_written(self):
        documents = {}
        for i in range(self.COUNT):
            root, expected = random_document(self.rng)
            documents[self.write(f"{i}.xml", ET.tostring(root, encoding="unicode"))] = expected
        self.assertEqual(validate(DOCUMENTS, documents), {file: [] for file in documents})
        for file, expected in documents.items():
            layout, warnings = read_layout(file)
            self.assertEqual((as_expected(layout), warnings), (expected, ""))

    def test_what_pitool_warns_of_is_refused(self):
        files = []
        for i in range(self.COUNT * 2):
            root, _ = random_document(self.rng)
            spoil(root, self.rng)
            files.append(self.write(f"{i}.xml", ET.tostring(root, encoding="unicode")))
        reasons = validate(DOCUMENTS, files)
        warned = accepted = 0
        for file in files:
            run = subprocess.run([PITOOL, "layout", file], text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                 check=False)
            if run.stderr:
                warned += 1
                self.assertNotEqual(reasons[file], [], pathlib.Path(file).read_text(encoding="utf-8") + run.stderr)
            accepted += not reasons[file]
        self.assertGreater(warned, self.COUNT // 4)
        self.assertGreater(accepted, 0)


# --- Language files

class LanguageFiles(Folder):
    def resolve(self, file, number):
        """The text that an event of this number gets."""
        return subprocess.run([PITOOL, "event", "--json", "--strings", file, "--id", str(number), "--timestamp", "0"],
                              text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)

    def test_those_of_the_project_are_valid(self):
        files = [str(path) for path in [*PROJECT.glob("share/pi/strings.*.xml"), *PROJECT.glob("examples/*/strings.*.xml")]]
        self.assertGreaterEqual(len(files), 2)
        self.assertEqual(validate(STRINGS, files), {file: [] for file in files})

    def test_whatever_reading_refuses_is_not_valid(self):
        sound = '<Strings language="de"><String id="10057">Text</String>\n<String id="10058">%1</String></Strings>'
        for old, new, is_valid, is_read in [
                ("Strings", "Strings", True, True),
                (' language="de"', "", True, True),
                ("Text", "A &amp; B &lt; <![CDATA[%1 > C]]>\n", True, True),
                ("10058", "0", True, True),
                ("10058", "4294967295", True, True),
                ("10058", "4294967296", False, False),
                ("10058", "5000000000", False, False),
                ("10058", "10057", False, False),
                ("10058", "010057", False, False),
                ("10058", "010058", False, True),
                ("10058", " 10058", False, False),
                ("10058", "10058 ", False, False),
                ("10058", "-1", False, False),
                ("10058", "+1", False, False),
                ("10058", "", False, False),
                ("10058", "REBUILD_FAILED", False, False),
                (' id="10057"', "", False, False),
                ("Text", "", False, True),
                ("Text", " \n", False, True),
                ("Text", "<b>Text</b>", False, False),
                ("Text", "Text<!-- comment -->", True, True),
                ("<String id", "text<String id", False, False),
                ("</Strings>", "<Text/></Strings>", False, False),
                ("</Strings>", "<!-- comment --></Strings>", True, True),
                ('id="10057"', 'id="10057" lang="de"', False, True),
                ('id="10057"', 'id="10057" placeholder1="drive" placeholder6="slot"', True, True),
                ('id="10057"', 'id="10057" placeholder1=""', False, True),
                ('id="10057"', 'id="10057" placeholder7="slot"', False, True),
                ('language="de"', 'langauge="de"', False, True),
                ("Strings", "Texts", False, False),
        ]:
            with self.subTest(old=old, new=new):
                text = sound.replace(old, new)
                self.assertEqual(self.reasons(STRINGS, text) == [], is_valid)
                run = self.resolve(self.write("document.xml", text), 10057)
                self.assertEqual(run.returncode == 0, is_read, run.stdout)

    def test_valid_ones_give_their_texts(self):
        rng = random.Random(SEED)
        print(f"seed {SEED}")
        for _ in range(30):
            root = ET.Element("Strings")
            texts = {}
            for number in rng.sample([0, 1, 10056, 10057, 12145, 2**32 - 1], 4):
                texts[number] = "".join(rng.choice("aäß€ %&<>\"'%1") for _ in range(rng.randrange(1, 20))) + "."
                ET.SubElement(root, "String", id=str(number)).text = texts[number]
            file = self.write("document.xml", ET.tostring(root, encoding="unicode"))
            self.assertEqual(validate(STRINGS, [file])[file], [])
            for number, text in texts.items():
                run = self.resolve(file, number)
                self.assertEqual(run.returncode, 0, run.stdout)
                self.assertEqual(json.loads(run.stdout)["event"]["Description"], text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
