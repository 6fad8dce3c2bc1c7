// SPDX-License-Identifier: Apache-2.0

#include "print/html.h"

#include "by_model.h"
#include "print/svg.h"
#include "print/text.h"

#include <pi/drive_health.h>

#include <algorithm>
#include <cctype>

namespace pitool {
namespace {

namespace Health = PI::HealthFigure;

constexpr std::size_t FIRST_TO_ACT_ON = 20;

// Colours have a contrast of 4.5 and more on their ground, light and dark.
constexpr const char* STYLE = R"(
:root{color-scheme:light dark;--ground:#fff;--text:#1a1d21;--faint:#5a6068;--line:#d5d9de;--bad:#b3001b;--look:#7a4f00;--good:#176437}
@media(prefers-color-scheme:dark){:root{--ground:#14171a;--text:#e7eaee;--faint:#a4acb5;--line:#3a4047;--bad:#ff8f87;--look:#ffc15e;--good:#7fd798}}
body{font:15px/1.45 system-ui,sans-serif;background:var(--ground);color:var(--text);max-width:1200px;margin:0 auto;padding:1rem}
h1{font-size:1.5rem;margin:0}h2{font-size:1.15rem;margin:2rem 0 .5rem}
.scroll{overflow-x:auto}table{border-collapse:collapse;width:100%}
th,td{text-align:left;padding:.25rem .6rem .25rem 0;border-bottom:1px solid var(--line);vertical-align:top}
th{font-weight:600;color:var(--faint)}.n{text-align:right;white-space:nowrap}
.f,.r,.k{font-weight:600}.f,.r{color:var(--bad)}.k{color:var(--look)}.g{color:var(--good)}.u,p,small{color:var(--faint)}
.counts{display:flex;flex-wrap:wrap;gap:.5rem 2rem;padding:0;margin:1rem 0;list-style:none}.counts b{font-size:1.5rem;display:block}
.plots{display:flex;flex-wrap:wrap;gap:1rem}figure{margin:0;flex:1 1 340px}svg{width:100%;height:auto;display:block}
svg text{font-size:12px;fill:var(--faint)}svg .a{stroke:var(--line);fill:none}svg .p{fill:none;stroke-width:7;stroke-linecap:round}
svg .bad{stroke:var(--bad)}svg .look{stroke:var(--look);stroke-linecap:square;stroke-width:6}svg .good{stroke:var(--good);stroke-width:4}
details{border-bottom:1px solid var(--line);padding:.25rem 0}summary{cursor:pointer;overflow-wrap:anywhere}td:last-child,.d{overflow-wrap:anywhere}a{color:inherit}
@media(max-width:640px){.w{display:none}.d{width:45%}}
@media print{body{max-width:none;padding:0;font-size:10pt}tr,details,figure{break-inside:avoid}}
)";

/// Printable text as HTML.
std::string Escaped(std::string_view text) {
    std::string html;
    for (const char byte : PrintableText(text)) {
        switch (byte) {
            case '&': html += "&amp;"; break;
            case '<': html += "&lt;"; break;
            case '>': html += "&gt;"; break;
            case '"': html += "&quot;"; break;
            default: html += byte;
        }
    }
    return html;
}

/// Class of a state in the style above.
const char* ClassOf(PI::_DRIVE_STATE state) {
    switch (state) {
        case PI::DriveState::FAILED: return "f";
        case PI::DriveState::REPLACE: return "r";
        case PI::DriveState::LOOK: return "k";
        case PI::DriveState::GOOD: return "g";
        case PI::DriveState::UNKNOWN: break;
    }
    return "u";
}

std::string Marked(const std::string& text, const SummaryFigure& figure) {
    return !figure.HasValue() ? "-" : figure.IsDoubtful() ? text + "?" : text;
}

std::string NumberText(const SummaryFigure& figure, const char* unit) {
    return Marked(std::to_string(figure.m_Value) + unit, figure);
}

std::string AgeOf(const DriveSummary& drive) {
    const SummaryFigure hours = drive.GetFigure(Health::POWER_ON_HOURS);
    return Marked(AgeText(static_cast<std::uint64_t>(hours.m_Value)), hours);
}

/// A figure as a sheet shows it; markup of its own only.
std::string ValueText(const PI::CHealthFigure& figure) {
    const std::int64_t value = figure.GetValue();
    switch (figure.GetUnit()) {
        case PI::FigureUnit::PERCENT: return std::to_string(value) + " %";
        case PI::FigureUnit::HOURS: return std::to_string(value) + " h";
        case PI::FigureUnit::BYTES:
            return value == 0 ? "0 bytes" : SizeText(static_cast<std::uint64_t>(value));
        case PI::FigureUnit::TERABYTES: return std::to_string(value) + " TB";
        case PI::FigureUnit::CELSIUS: return std::to_string(value) + " &deg;C";
        default: return std::to_string(value);
    }
}

/// "POWER_ON_HOURS" in plain words.
std::string Words(const char* name) {
    std::string words;
    for (; *name != '\0'; ++name) {
        words += *name == '_' ? ' ' : static_cast<char>(std::tolower(static_cast<unsigned char>(*name)));
    }
    return words;
}

// Classes of the style above; narrow screens do not show the wide ones.
constexpr const char* NUMBER = "n";
constexpr const char* WIDE_NUMBER = "\"n w\"";

void AddCell(const char* cellClass, const std::string& html, std::string& text) {
    text.append("<td class=").append(cellClass).append(">").append(html);
}

/// Model and serial number, one below the other, so that the tables fit narrow screens.
std::string DriveCell(const DriveSummary& drive, const std::string& link = "") {
    const std::string model = Escaped(drive.GetModel());
    return "<td class=d>" + (link.empty() ? model : "<a href=\"#" + link + "\">" + model + "</a>") +
           "<br><small>" + Escaped(drive.GetSerial()) + "</small>";
}

constexpr const char* ROW_HEADINGS =
    "<th>State<th>Drive<th class=\"n w\">Size<th class=n>Age<th class=n>Wear"
    "<th class=\"n w\">Life left<th class=\"n w\">&deg;C<th class=n>Errors";

/// The cells of a drive below ROW_HEADINGS.
std::string Row(const DriveSummary& drive, const std::string& link) {
    std::string html = "<tr>";
    AddCell(ClassOf(drive.GetState()), StateWord(drive.GetState()), html);
    html += DriveCell(drive, link);
    AddCell(WIDE_NUMBER, drive.GetCapacity() == 0 ? "-" : SizeText(drive.GetCapacity()), html);
    AddCell(NUMBER, AgeOf(drive), html);
    AddCell(NUMBER, NumberText(drive.GetFigure(Health::WEAR), " %"), html);
    AddCell(WIDE_NUMBER, Escaped(LifeText(drive.GetForecast())), html);
    AddCell(WIDE_NUMBER, NumberText(drive.GetFigure(Health::TEMPERATURE), ""), html);
    AddCell(NUMBER, NumberText(drive.GetErrors(), ""), html);
    return html;
}

std::string ModelRows(const std::vector<const DriveSummary*>& drives) {
    std::string html =
        "<tr><th>Model<th class=n>Drives<th class=n>Failed<th class=n>Replace<th class=\"n w\">Look"
        "<th class=\"n w\">Median age<th class=n>Median wear<th class=\"n w\">Highest wear";
    for (const ModelCounts& model : CountByModel(drives)) {
        html += "<tr><td>" + Escaped(model.m_Model);
        const auto percent = [](const std::optional<std::int64_t>& wear) {
            return wear ? std::to_string(*wear) + " %" : "-";
        };
        AddCell(NUMBER, std::to_string(model.m_Drives), html);
        AddCell(NUMBER, std::to_string(model.m_Failed), html);
        AddCell(NUMBER, std::to_string(model.m_Replace), html);
        AddCell(WIDE_NUMBER, std::to_string(model.m_Look), html);
        AddCell(WIDE_NUMBER,
                model.m_MedianHours ? AgeText(static_cast<std::uint64_t>(*model.m_MedianHours)) : "-", html);
        AddCell(NUMBER, percent(model.m_MedianWear), html);
        AddCell(WIDE_NUMBER, percent(model.m_HighestWear), html);
        html += "\n";
    }
    return html;
}

bool IsGood(const DriveSummary& drive) {
    return drive.GetState() == PI::DriveState::GOOD;
}

bool NeedsAction(const DriveSummary& drive) {
    return drive.GetState() >= PI::DriveState::LOOK;
}

/// When the reports were made; empty where none tells.
std::string Period(const std::vector<const DriveSummary*>& drives) {
    std::int64_t first = 0;
    std::int64_t last = 0;
    for (const DriveSummary* drive : drives) {
        const std::int64_t time = drive->GetTime();
        first = time != 0 && (first == 0 || time < first) ? time : first;
        last = std::max(last, time);
    }
    if (last == 0) {
        return "";
    }
    return "<p>Reports of " + TimeText(first) + (first == last ? "" : " to " + TimeText(last)) + "</p>";
}

std::string Counts(const std::vector<const DriveSummary*>& drives) {
    std::string html = "<ul class=counts>";
    for (const PI::_DRIVE_STATE state :
         {PI::DriveState::FAILED, PI::DriveState::REPLACE, PI::DriveState::LOOK, PI::DriveState::UNKNOWN,
          PI::DriveState::GOOD}) {
        const auto count = std::count_if(drives.begin(), drives.end(), [state](const DriveSummary* drive) {
            return drive->GetState() == state;
        });
        html.append("<li class=").append(ClassOf(state)).append("><b>").append(std::to_string(count));
        html.append("</b>").append(PI::DriveStateToString(state));
    }
    return html + "</ul>";
}

}  // namespace

std::string HtmlSheet(const PI::CDriveReport& report, const DecidedHealth& health) {
    std::string html = "<ul>";
    for (const PI::CHealthReason& reason : health.GetReasons()) {
        html += "<li>" + Escaped(reason.GetText());
    }
    for (const std::string& note : report.GetNotes()) {
        html += "<li class=u>" + Escaped(note);
    }
    html += "</ul><table>";
    for (const PI::CHealthFigure& figure : report.GetHealth().GetFigures()) {
        if (figure.HasValue()) {
            html += "<tr><td>" + Words(PI::HealthFigureToString(figure.GetFigure())) + "<td class=n>" +
                    ValueText(figure) + (figure.GetState() == PI::FigureState::DOUBTFUL ? "?" : "") + "<td>" +
                    Escaped(figure.GetText());
        }
    }
    return html + "</table>";
}

std::string HtmlText(const std::vector<const DriveSummary*>& drives,
                     const std::vector<std::pair<std::string, std::string>>& refused) {
    std::string html =
        "<!DOCTYPE html>\n<html lang=en><head><meta charset=utf-8><title>Drives</title>"
        "<meta name=viewport content=\"width=device-width,initial-scale=1\"><style>" +
        std::string(STYLE) + "</style></head>\n<body><h1>" + std::to_string(drives.size()) +
        (drives.size() == 1 ? " drive" : " drives") + "</h1>";
    html += Counts(drives) + Period(drives);

    const auto toActOn = static_cast<std::size_t>(std::count_if(
        drives.begin(), drives.end(), [](const DriveSummary* drive) { return NeedsAction(*drive); }));
    html += "\n<h2>What to act on first</h2>";
    if (toActOn == 0) {
        html += "<p>Nothing.</p>";
    } else {
        html += "<div class=scroll><table><tr><th>State<th>Drive<th>Why<th class=w>File";
        for (std::size_t i = 0; i < std::min(toActOn, FIRST_TO_ACT_ON); ++i) {
            const DriveSummary& drive = *drives[i];
            html += "<tr>";
            AddCell(ClassOf(drive.GetState()), StateWord(drive.GetState()), html);
            html += DriveCell(drive) + "<td>" + Escaped(drive.GetReason()) + "<td class=w>" +
                    Escaped(drive.GetFile()) + "\n";
        }
        html += "</table></div>";
        if (toActOn > FIRST_TO_ACT_ON) {
            html += "<p>" + std::to_string(toActOn - FIRST_TO_ACT_ON) +
                    " more are in the list of all drives.</p>";
        }
    }

    html += "\n<h2>Wear</h2><div class=plots>" + WearPlots(drives) + "</div>";
    html += "\n<h2>By model</h2><div class=scroll><table>" + ModelRows(drives) + "</table></div>";

    html += "\n<h2>All drives, the worst first</h2><div class=scroll><table><tr>" + std::string(ROW_HEADINGS);
    std::string sheets;
    std::size_t number = 0;
    for (const DriveSummary* drive : drives) {
        const bool hasSheet =
            !drive->GetDetail().empty() && (!IsGood(*drive) || drives.size() <= HTML_SHEETS_OF_ALL);
        const std::string anchor = hasSheet ? "d" + std::to_string(++number) : "";
        html += Row(*drive, anchor) + "\n";
        if (hasSheet) {
            sheets += "<details id=" + anchor + "><summary>" + Escaped(drive->GetModel()) + " " +
                      Escaped(drive->GetSerial()) + " <small>" + Escaped(drive->GetFile()) +
                      "</small></summary>" + drive->GetDetail() + "</details>\n";
        }
    }
    html += "</table></div>";
    if (!sheets.empty()) {
        html += "\n<h2>Sheets</h2>" +
                std::string(number < drives.size() ? "<p>Only of drives that are not good.</p>" : "") +
                sheets;
    }
    if (!refused.empty()) {
        html += "\n<h2>Not read</h2><div class=scroll><table>";
        for (const auto& [file, reason] : refused) {
            html += "<tr><td>" + Escaped(file) + "<td>" + Escaped(reason) + "\n";
        }
        html += "</table></div>";
    }
    return html + "</body></html>\n";
}

}  // namespace pitool
