// SPDX-License-Identifier: Apache-2.0
// Puts a field above the table of a page that narrows its rows to those that hold every word typed, in any column and
// without regard to case. "?q=words" in the address fills the field. Without this script the table is simply there.
(function () {
  "use strict";

  const table = document.querySelector("table.rows");
  const rows = Array.from(table.tBodies[0].rows);
  const texts = rows.map((row) => row.textContent.toLowerCase());

  const field = document.createElement("input");
  field.type = "search";
  field.id = "filter";
  field.placeholder = "number, name or text";
  field.autocomplete = "off";

  const label = document.createElement("label");
  label.htmlFor = field.id;
  label.textContent = "Show rows with";

  const count = document.createElement("span");
  count.setAttribute("role", "status");

  const line = document.createElement("p");
  line.className = "filter";
  line.append(label, " ", field, " ", count);
  table.before(line);

  function narrow() {
    const words = field.value.toLowerCase().split(/\s+/).filter(Boolean);
    let shown = 0;
    rows.forEach((row, i) => {
      row.hidden = !words.every((word) => texts[i].includes(word));
      shown += row.hidden ? 0 : 1;
    });
    count.textContent = shown + " of " + rows.length + " rows";
  }

  // A link to a row that the filter hides would lead nowhere.
  function reveal() {
    const row = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    if (row && row.hidden) {
      field.value = "";
      narrow();
      row.scrollIntoView();
    }
  }

  field.value = new URLSearchParams(location.search).get("q") || "";
  field.addEventListener("input", narrow);
  addEventListener("hashchange", reveal);
  narrow();
  reveal();
})();
