// Everything that happened, oldest first; follows the end unless the reader scrolled away.

import { byId, element, timeOfDay } from "./dom.js";

const kinds = [
  ["screen", "Screen"],
  ["notification", "Notifications"],
  ["beacon", "Beacons"],
  ["callback", "Callbacks"],
  ["log", "Log"],
  ["hit", "Hits"],
  ["request", "Requests"],
  ["studio", "Studio"],
];
const kMostRows = 2000;
const kMostMarked = 50_000; // characters; tokens are elements
const kLongBody = 4000; // characters; a longer one is folded, and only its beginning searched
const hidden = new Set();
let wanted = "";

// The process's starts and ends are shown with what the studio did.
const groupOf = (kind) => (kind === "process" ? "studio" : kind);

/** Texts that hold JSON, shown as what they hold. */
function unfolded(value) {
  if (typeof value === "string" && /^[[{]/.test(value)) {
    try { return JSON.parse(value); } catch { return value; }
  }
  if (value === null || typeof value !== "object" || Array.isArray(value)) return value;
  return Object.fromEntries(Object.entries(value).map(([key, member]) => [key, unfolded(member)]));
}

function token(text, next) {
  if (!text.startsWith('"')) return "literal";
  return /^\s*:/.test(next) ? "key" : "string";
}

/** A value as indented JSON with its tokens marked. */
export function prettyPrinted(value) {
  const pre = element("pre");
  const text = JSON.stringify(unfolded(value), null, 2);
  let end = text.length > kMostMarked ? text.length : 0;
  if (end) pre.append(text);
  for (const match of text.slice(end).matchAll(/"(?:[^"\\]|\\.)*"|true|false|null|-?\d[\d.eE+-]*/g)) {
    const after = match.index + match[0].length;
    pre.append(text.slice(end, match.index),
      element("span", { class: token(match[0], text.slice(after, after + 4)), text: match[0] }));
    end = after;
  }
  pre.append(text.slice(end));
  return pre;
}

const isEmpty = (body) => body === null || body === undefined ||
  (typeof body === "object" && Object.keys(body).length === 0);

function details(entry, head, open) {
  const node = element("details", {}, element("summary", { class: "line" }, ...head));
  const print = () => {
    if (node.children.length > 1) return;
    if (entry.cut) node.append(element("p", { class: "hint", text: `The beginning; all of it, ${entry.cut} bytes, was too long to be kept.` }));
    node.append(prettyPrinted(entry.body));
  };
  node.addEventListener("toggle", print); // not before it is looked at
  if (open) print();
  node.open = open;
  return node;
}

function row(entry) {
  const head = [
    element("time", { text: timeOfDay(entry.at), datetime: new Date(entry.at).toISOString() }),
    element("span", { class: "kind", text: entry.level ? `log ${entry.level}` : entry.kind }),
    element("span", { class: "title", text: entry.title }),
  ];
  const item = element("li", { "data-kind": entry.kind, "data-level": entry.level });
  const body = JSON.stringify(entry.body ?? "");
  if (isEmpty(entry.body)) {
    item.append(element("div", { class: "line" }, ...head));
  } else {
    item.append(details(entry, head, entry.kind === "beacon" && body.length <= kLongBody));
  }
  item.dataset.text = `${entry.title} ${body.slice(0, kLongBody)}`.toLowerCase();
  return item;
}

function applyFilter(item) {
  item.hidden = hidden.has(groupOf(item.dataset.kind)) || !item.dataset.text.includes(wanted);
}

function applyFilters() {
  for (const item of byId("timeline").children) applyFilter(item);
}

function chip([kind, label]) {
  const button = element("button", { type: "button", class: "chip", "aria-pressed": "true", "data-kind": kind, text: label });
  button.addEventListener("click", () => {
    const show = hidden.delete(kind);
    if (!show) hidden.add(kind);
    button.setAttribute("aria-pressed", String(show));
    applyFilters();
  });
  return button;
}

export function wireTimeline() {
  byId("kinds").append(...kinds.map(chip));
  byId("search").addEventListener("input", (event) => {
    wanted = event.target.value.trim().toLowerCase();
    applyFilters();
  });
  byId("clear").addEventListener("click", () => byId("timeline").replaceChildren());
}

let following = false;
function follow(list) {
  if (following || list.scrollHeight - list.scrollTop - list.clientHeight > 40) return;
  following = true;
  requestAnimationFrame(() => { list.scrollTop = list.scrollHeight; following = false; });
}

export function addEntry(entry) {
  const list = byId("timeline");
  follow(list);
  const item = row(entry);
  applyFilter(item);
  list.append(item);
  if (list.children.length > kMostRows) list.firstChild.remove();
}
