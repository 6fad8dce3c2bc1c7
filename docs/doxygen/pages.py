# SPDX-License-Identifier: Apache-2.0

"""pages.py FOLDER DOCUMENT...: writes what Doxygen reads besides the headers: a page for each document and
one for each list of the library."""
import html
import pathlib
import re
import sys

import guides
import lists

VOCABULARY_COLUMNS = ("Number", "Constant", "Name")
SSD_COLUMNS = ("Vendor", "Model", "Characters compared", "Endurance in TB")

# Page, list, title, columns, indexes of those that identify a row, description. The columns are the first fields of each
# row of the list.
TABLES = (
    ("table_error_codes", "include/pi/vocabulary/error_codes.def", "Error codes", VOCABULARY_COLUMNS, (0,),
     "Outcomes of operations: the constants of PI::ErrorCode, with the names that PI::ErrorCodeToString returns."),
    ("table_property_ids", "include/pi/vocabulary/property_ids.def", "Property identifiers", VOCABULARY_COLUMNS, (0,),
     "Which property a value belongs to: the constants of PI::PropertyID, with the names that PI::PropertyIDToString "
     "returns. If two rows have the same number, the first has the name."),
    ("table_property_values", "include/pi/vocabulary/property_values.def", "Property values", VOCABULARY_COLUMNS, (0,),
     "Named states that properties hold: the constants of PI::PropertyValue, with the names that "
     "PI::PropertyValueToString returns and PI::StringToPropertyValue accepts."),
    ("table_operation_ids", "include/pi/vocabulary/operation_ids.def", "Operation identifiers", VOCABULARY_COLUMNS,
     (0,), "Actions offered on objects: the constants of PI::OperationID, with the names that "
     "PI::OperationIDToString returns."),
    ("table_event_ids", "include/pi/vocabulary/event_ids.def", "Event identifiers",
     VOCABULARY_COLUMNS + ("English text",), (0,),
     "What happened: the constants of PI::EventID, with the names that PI::EventIDToString returns, and the "
     "English texts of `strings.en.xml` with their placeholders."),
    ("table_meanings", "docs/vocabulary-meanings.tsv", "Meanings",
     ("Number", "Constant", "Type or severity", "Unit", "Set by", "Meaning"), (0,),
     "What properties, operations and events mean in the example plug-ins, `pitool` and the guides. The meaning of all "
     "others is up to the plug-ins that use them and their service. `mdraid` and `smartctl` are the example plug-ins, "
     "the tutorial is that of @ref guide_writing_a_plugin. The type of a property is a constant of PI::PropertyType; if "
     "another program sets another type or unit, its name precedes it."),
    ("table_help_topics", "src/vocabulary/help_topics.def", "Help topics", ("Number", "Page and anchor"), (0,),
     "What PI::CPluginHelper::GetHelpPath returns for the number of a help topic."),
    ("table_icons", "src/vocabulary/icons.def", "Icons", ("Number", "File"), (0,),
     "What PI::CPluginHelper::GetIconPath returns for the number of an icon."),
    ("table_additional_sense", "src/drives/additional_sense.def", "Additional sense codes", ("Code", "Qualifier", "Text"),
     (0, 1), "What PI::CPluginHelper::TranslateSenseASC returns for a pair of additional sense code and qualifier."),
    ("table_sata_ssd", "src/drives/ssd_endurance_sata.def", "Endurance of SATA drives", SSD_COLUMNS, (1,),
     "The rows of PI::SATASSDEndurance, in their order. PI::CPluginHelper::findLifeTimeProp returns the first that "
     "matches a model: in the number of leading characters that the row says, or whole if it says 0."),
    ("table_sas_ssd", "src/drives/ssd_endurance_sas.def", "Endurance of SAS drives",
     ("Vendor", "Model", "Endurance in TB"), (1,), "The rows of PI::SASSSDEndurance, in their order."),
    ("table_nvme_ssd", "src/drives/ssd_endurance_nvme.def", "Endurance of NVMe drives", SSD_COLUMNS, (1,),
     "The rows of PI::NVMeSSDEndurance, in their order."),
    ("table_additional_ssd", "src/drives/ssd_endurance_additional.def", "Endurance of further drives",
     ("Vendor", "Model begins", "Endurance in TB", "Basis"), (1,),
     "The models that PI::FindEnduranceRating knows besides those of the three lists."),
    ("table_wear_attributes", "src/drives/wear_attributes.def", "Attributes of wear",
     ("Model", "Name", "Attribute", "Check", "Field", "Meaning", "Parameter", "Drives", "Percent"), (2, 0, 1, 3),
     "How the wear of a solid-state drive, PI::HealthFigure::WEAR, is read from SMART attributes: for each attribute the first "
     "row that applies is used; of several attributes, the one whose row comes first. The last columns are the drives on which "
     "the row was tested and the percentage of them that agree with their own statistic."),
    ("table_hours_attributes", "src/drives/hours_attributes.def", "Attributes of hours",
     ("Model", "Name", "Field", "Meaning", "Parameter", "Drives", "Percent"), (2, 0, 1),
     "How PI::HealthFigure::POWER_ON_HOURS is read from attribute 9: the first row that applies is used."),
    ("table_amount_attributes", "src/drives/amount_attributes.def", "Attributes of amounts",
     ("Direction", "Model", "Name", "Attribute", "Check", "Bytes of one count", "Drives", "Percent"), (3, 0, 1, 2, 4),
     "How PI::HealthFigure::BYTES_WRITTEN and PI::HealthFigure::BYTES_READ are read from attributes: the first row that applies "
     "is used."),
    ("table_spare_attributes", "src/drives/spare_attributes.def", "Attributes of spare",
     ("Model", "Attribute", "Check", "Field", "Meaning", "Drives", "Lowest percent"), (1, 0, 2),
     "How PI::HealthFigure::SPARE is read from attributes: the first row that applies is used."),
    ("table_error_attributes", "src/drives/error_attributes.def", "Attributes of errors",
     ("Figure", "Name", "Attribute", "Field", "Meaning", "Parameter"), (0, 1, 2),
     "How the other figures, constants of PI::HealthFigure, are read from attributes."),
    ("table_health_thresholds", "src/drives/health_thresholds.def", "Thresholds of figures",
     ("Figure", "Medium", "From", "State", "Based on"), (0, 1, 2),
     "The state that a figure gives from a value on: constants of PI::HealthFigure and PI::DriveState."),
    ("table_trace_categories", "src/trace/categories.def", "Trace categories", ("Category", "Tag"), (0,),
     "The categories of ::VELKTrace, each with a tag and a logger of its own."),
)

def table_rows(source):
    if source.endswith(".tsv"):
        return lists.read_meanings(source)
    rows = lists.read_list(source)
    if source.endswith("/event_ids.def"):
        texts = lists.event_texts()
        rows = [row + [texts.get(row[0], "")] for row in rows]
    return rows


def place_of(row, key):
    """The anchor of a row in its page: its number, or the text that identifies it."""
    return "-".join(re.sub(r"[^\w.]+", "-", row[column]).strip("-") for column in key)


def kind(column):
    """Columns of numbers and of other short words are narrow."""
    return ' class="short"' if column in ("Number", "Category", "Code", "Qualifier", "Vendor") else ""


def same(row, i):
    """A text that repeats the previous one, which a narrow page leaves out."""
    return ' class="same"' if i > 0 and row[i] == row[i - 1] and not row[i].isdigit() else ""


def table_page(page, source, title, columns, key, text):
    rows = table_rows(source)
    lines = [f"# {title} {{#{page}}}", "", f"{text} {len(rows)} rows.", "", "@htmlonly[block]",
             '<table class="rows">',
             "<thead><tr>" + "".join(f"<th{kind(column)}>{html.escape(column)}</th>" for column in columns)
             + "</tr></thead>",
             "<tbody>"]
    places = set()
    for row in rows:
        place = place_of(row, key)
        cells = [html.escape(cell) for cell in row[:len(columns)]]
        if place not in places:
            cells[key[0]] = f'<a href="#{place}">{cells[key[0]]}</a>'
        lines.append(("<tr>" if place in places else f'<tr id="{place}">')
                     + "".join(f"<td{same(row, i)}>{cell}</td>" for i, cell in enumerate(cells)) + "</tr>")
        places.add(place)
    return "\n".join(lines + ["</tbody>", "</table>", '<script src="tables.js"></script>', "@endhtmlonly", ""])


def main():
    pages = pathlib.Path(sys.argv[1])
    pages.mkdir(parents=True)
    for path in sys.argv[2:]:
        text = pathlib.Path(path).read_text(encoding="utf-8")
        (pages / f"{guides.page_of(path)}.markdown").write_text(guides.document(path, text), encoding="utf-8")
    for table in TABLES:
        (pages / f"{table[0]}.markdown").write_text(table_page(*table), encoding="utf-8")
    index = "".join(f"- @subpage {page}\n" for page, *_ in TABLES)
    (pages / "tables.markdown").write_text(
        "# Tables {#tables}\n\nEach is generated from the list from which the library itself is compiled, and has a field to filter it. "
        f"A row has an address of its own: [event 10057](table_event_ids.html#10057).\n\n{index}", encoding="utf-8")


if __name__ == "__main__":
    try:
        main()
    except ValueError as error:
        sys.exit(str(error))
