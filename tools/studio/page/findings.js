// What the linter finds in the document that is being edited, beside it and while it is typed.

import { byId, element, setText } from "./dom.js";
import { post } from "./connection.js";

const kPause = 300; // milliseconds without a key
const editor = byId("editor");
let waiting;
let asked = 0;

/** Where a line and column (both from 1, columns in whole characters) stand in a text. */
function offsetOf(text, line, column) {
  const lines = text.split("\n");
  const before = lines.slice(0, line - 1).reduce((sum, { length }) => sum + length + 1, 0);
  return before + [...(lines[line - 1] ?? "")].slice(0, column - 1).join("").length;
}

function goTo({ line, column }) {
  const offset = offsetOf(editor.value, line, column);
  editor.focus();
  editor.setSelectionRange(offset, offset);
  editor.scrollTop = (line - 4) * parseFloat(getComputedStyle(editor).lineHeight);
}

function row(finding) {
  const button = element("button", { type: "button", "data-severity": finding.severity },
    element("span", { class: "where", text: `${finding.line}:${finding.column}` }),
    element("span", { class: "severity", text: finding.severity }),
    element("code", { text: finding.path }),
    element("span", { class: "problem", text: `${finding.problem} ${finding.effect}` }),
    element("span", { class: "remedy", text: finding.remedy }));
  button.addEventListener("click", () => goTo(finding));
  return element("li", {}, button);
}

const counted = (count, what) => (count === 0 ? [] : [`${count} ${what}${count === 1 ? "" : "s"}`]);

function summary(findings) {
  const errors = findings.filter(({ severity }) => severity === "error").length;
  return [...counted(errors, "error"), ...counted(findings.length - errors, "warning")].join(", ") ||
    "Nothing to mend";
}

async function lint() {
  const number = (asked += 1);
  const findings = await post("lint", editor.value).catch(() => undefined);
  if (!findings || number !== asked) return;
  byId("findings").replaceChildren(...findings.map(row));
  setText(byId("findings-summary"), summary(findings));
  byId("findings-summary").dataset.tone =
    findings.length === 0 ? "good" : findings.some(({ severity }) => severity === "error") ? "bad" : "warn";
}

export function lintSoon() {
  clearTimeout(waiting);
  waiting = setTimeout(lint, kPause);
}
