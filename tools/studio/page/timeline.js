// Everything that happened, oldest first.

import { byId, element, setText } from "./dom.js";
import { entryRow, isOpenAtFirst, markFolded, targetOf } from "./entryrow.js";
import { highlight } from "./highlight.js";
import { VirtualList } from "./virtuallist.js";

const kinds = [
  ["screen", "Screen"],
  ["notification", "Notifications"],
  ["beacon", "Beacons"],
  ["callback", "Callbacks"],
  ["store", "Store"],
  ["sdk", "Permanent data"],
  ["log", "Log"],
  ["hit", "Hits"],
  ["request", "Requests"],
  ["studio", "Studio"],
];
// As much as the studio keeps.
const kMostEntries = 5000;
const kMostCharacters = 8 << 20;
const kMostSearched = 4000; // characters of a body

const records = []; // {entry, text, size, open}
let characters = 0; // of all
let shown = records; // those that pass the filter
const hidden = new Set(); // kinds
let wanted = "";
let list;

// The process's starts and ends are shown with what the studio did.
const groupOf = ({ kind }) => (kind === "process" ? "studio" : kind);

const passes = ({ entry, text }) => !hidden.has(groupOf(entry)) && text.includes(wanted);

function recordOf(entry) {
  const body = JSON.stringify(entry.body ?? "");
  return {
    entry,
    text: `${entry.title} ${body.slice(0, kMostSearched)}`.toLowerCase(),
    size: body.length,
    open: isOpenAtFirst(entry, body),
  };
}

// The entry that the page's address names, as soon as it is there.
let linked = 0;
function readLink() {
  linked = Number(/^#entry-(\d+)$/.exec(location.hash)?.[1] ?? 0);
  showSoon();
}

function showLinked() {
  const record = linked && shown.find(({ entry }) => entry.id === linked);
  if (!record) return;
  linked = 0;
  list.to(record);
}

let waiting = false;
function showSoon() {
  if (waiting) return;
  waiting = true;
  requestAnimationFrame(() => {
    waiting = false;
    for (const row of list.rows) markFolded(row, wanted); // before they are measured
    list.show(shown);
    showLinked();
  });
}

function applyFilter() {
  const isFiltered = hidden.size > 0 || wanted !== "";
  shown = isFiltered ? records.filter(passes) : records;
  showSoon();
}

function showState() {
  highlight(list.rows, wanted);
  byId("newest").hidden = !list.isBehind;
  setText(byId("found"), shown === records ? "" : `${shown.length} of ${records.length}`);
}

function chip([kind, label]) {
  const button = element("button", { type: "button", class: "chip", "aria-pressed": "true", "data-kind": kind, text: label });
  button.addEventListener("click", () => {
    const show = hidden.delete(kind);
    if (!show) hidden.add(kind);
    button.setAttribute("aria-pressed", String(show));
    applyFilter();
  });
  return button;
}

function clear() {
  records.length = 0;
  characters = 0;
  applyFilter();
}

function rowOf(record) {
  const row = entryRow(record, () => list.resized());
  markFolded(row, wanted);
  return row;
}

export function wireTimeline() {
  list = new VirtualList(byId("timeline"), {
    rowOf,
    targetOf,
    onShown: showState,
  });
  byId("kinds").append(...kinds.map(chip));
  byId("search").addEventListener("input", (event) => {
    wanted = event.target.value.trim().toLowerCase();
    applyFilter();
  });
  byId("clear").addEventListener("click", clear);
  byId("newest").addEventListener("click", () => list.toEnd());
  addEventListener("hashchange", readLink);
  readLink();
}

function dropOldest() {
  const oldest = records.shift();
  characters -= oldest.size;
  if (shown !== records && shown[0] === oldest) shown.shift();
}

export function addEntry(entry) {
  const record = recordOf(entry);
  records.push(record);
  characters += record.size;
  if (shown !== records && passes(record)) shown.push(record);
  while (records.length > kMostEntries || (characters > kMostCharacters && records.length > 1)) dropOldest();
  showSoon();
}
