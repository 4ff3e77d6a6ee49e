// How store, permanent data and TC string differ between two points of the timeline. Between two
// entries that say what changed nothing did, so those, and the launches, are all the points there are.
// What one action changes in store and permanent data is one point.

import { post } from "./connection.js";
import { byId, element, setText, timeOfDay } from "./dom.js";
import { changesOfStrings } from "./tcstring.js";
import { keyOf, namesOf, valueOf } from "./values.js";

const kMostPoints = 5000;
const kMostCharacters = 8 << 20;
const kTCString = "IABTCF_TCString";
const kinds = { store: "Store", sdk: "Permanent data" };

const points = []; // {id, title, entries, size}
let characters = 0; // of all
let launches = 0;
let application; // as it was told last

function titleOf(entry) {
  const time = timeOfDay(entry.at);
  return entry.kind === "process" ? `${time} Launch ${launches}` : `${time} ${entry.title}`;
}

/** An entry of the timeline, which may be a point. */
export function addPoint(entry) {
  const isLaunch = entry.kind === "process" && entry.title.startsWith("Application started");
  if (!isLaunch && !(entry.kind in kinds)) return;
  if (isLaunch) launches += 1;
  const size = JSON.stringify(entry.body ?? "").length;
  const last = points.at(-1);
  if (entry.kind === "sdk" && last?.id === entry.id - 1 && last.entries[0].kind === "store")
    Object.assign(last, { id: entry.id, title: `${last.title}, p${entry.title.slice(1)}`, entries: [...last.entries, entry], size: last.size + size });
  else points.push({ id: entry.id, title: titleOf(entry), entries: [entry], size });
  characters += size;
  while (points.length > kMostPoints || characters > kMostCharacters) characters -= points.shift().size;
  if (!byId("panel-compare").hidden) showSoon();
}

/** What became other after one point, up to another: {key: [before, after]}. */
function differences(kind, from, to) {
  const values = new Map();
  let leftOut = 0;
  const between = points.filter(({ id }) => id > from && id <= to);
  for (const entry of between.flatMap(({ entries }) => entries)) {
    if (entry.kind !== kind) continue;
    const { before, now, "left out": missing = 0 } = entry.cut ? { before: {}, now: {}, "left out": 1 } : entry.body;
    leftOut += missing;
    for (const key of new Set([...Object.keys(before), ...Object.keys(now)]))
      values.set(key, [values.has(key) ? values.get(key)[0] : before[key], now[key]]);
  }
  const rows = [...values].filter(([, [before, after]]) => before !== after);
  return { rows: rows.sort(([a], [b]) => (a < b ? -1 : 1)), leftOut };
}

const cell = (tag, value) =>
  element("td", {}, value === undefined ? element("em", { text: "none" }) : element(tag, {}, valueOf(value)));

function fillTable(table, { rows }, names) {
  table.tBodies[0].replaceChildren(...rows.map(([key, [before, after]]) =>
    element("tr", {}, keyOf(key, names), cell("del", before), cell("ins", after))));
}

let asked = 0;
async function showStrings([before, after]) {
  const mine = ++asked;
  byId("compare-tc").hidden = true;
  if (before === undefined || after === undefined || before === after || !application?.vendorList) return;
  const [old, now] = await Promise.all([before, after].map((text) => post("tc", text).catch(() => ({}))));
  if (mine !== asked || !old.model || !now.model) return;
  byId("compare-tc-changes").replaceChildren(...changesOfStrings(now.model, old.model, application.vendorList));
  byId("compare-tc").hidden = false;
}

const valueAt = (select) => (select.value === "" ? Infinity : Number(select.value));

function showDifferences() {
  const chosen = [valueAt(byId("compare-from")), valueAt(byId("compare-to"))].sort((a, b) => a - b);
  const names = application ? namesOf(application) : {};
  const [store, data] = Object.keys(kinds).map((kind) => differences(kind, ...chosen));
  fillTable(byId("compare-store"), store, names);
  fillTable(byId("compare-sdk"), data, names);
  byId("compare-store-section").hidden = store.rows.length === 0;
  byId("compare-sdk-section").hidden = data.rows.length === 0;
  const leftOut = store.leftOut + data.leftOut;
  setText(byId("compare-summary"), (store.rows.length + data.rows.length === 0 ? "Nothing differs."
    : `Different: ${store.rows.length} of the store, ${data.rows.length} of the permanent data.`) +
    (leftOut > 0 ? ` Too long to be kept: ${leftOut}.` : ""));
  showStrings(store.rows.find(([key]) => key === kTCString)?.[1] ?? []);
}

// What is chosen stays chosen while points come.
function fillSelect(select, first, last, fallback) {
  const { value } = select;
  const options = [first, ...points.map(({ id, title }) => [String(id), title]), last].filter(Boolean);
  select.replaceChildren(...options.map(([id, text]) => element("option", { value: id, text })));
  select.value = options.some(([id]) => id === value) ? value : fallback;
}

function show() {
  fillSelect(byId("compare-from"), ["0", "The beginning"], undefined, "0");
  fillSelect(byId("compare-to"), undefined, ["", "Now"], "");
  showDifferences();
}

let waiting = false;
function showSoon() {
  if (waiting) return;
  waiting = true;
  requestAnimationFrame(() => { waiting = false; show(); });
}

export function wireCompare() {
  new MutationObserver(() => { if (!byId("panel-compare").hidden) show(); })
    .observe(byId("panel-compare"), { attributeFilter: ["hidden"] });
  for (const id of ["compare-from", "compare-to"]) byId(id).addEventListener("change", showDifferences);
}

export function renderCompare(state) {
  application = state.application;
}
