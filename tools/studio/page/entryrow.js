// One entry of the timeline as a row.

import { element, timeOfDay } from "./dom.js";
import { prettyPrinted } from "./prettyprint.js";

const kLongBody = 4000; // characters; a longer one is folded

const isEmpty = (body) => body === null || body === undefined ||
  (typeof body === "object" && Object.keys(body).length === 0);

/** Whether an entry stands open at first, with its body as JSON. */
export const isOpenAtFirst = ({ kind }, body) => kind === "beacon" && body.length <= kLongBody;

const kindOf = ({ kind, level }) => (level ? `log ${level}` : kind);

/** What takes the focus. */
export const targetOf = (row) => row.querySelector("summary") ?? row;

function bodyOf({ entry }) {
  const cut = entry.cut
    ? [element("p", { class: "hint", text: `The beginning; all of it, ${entry.cut} bytes, was too long to be kept.` })] : [];
  return [...cut, prettyPrinted(entry.body)];
}

function details(record, head, onResized) {
  const summary = element("summary", { class: "line" }, ...head);
  const node = element("details", {}, summary, ...(record.open ? bodyOf(record) : []));
  node.open = record.open;
  summary.addEventListener("click", (event) => {
    event.preventDefault(); // the browser would say so after it was painted
    record.open = node.open = !record.open;
    if (node.children.length === 1) node.append(...bodyOf(record));
    onResized();
  });
  return node;
}

const records = new WeakMap(); // by row
/** Whose row it is. */
export const entryOf = (row) => records.get(row).entry;

/** Says at a row whose body is folded when what is searched for lies there. */
export function markFolded(row, wanted) {
  const { entry, text } = records.get(row);
  const isThere = wanted !== "" && text.slice(entry.title.toLowerCase().length).includes(wanted);
  const mark = row.querySelector(".folded");
  const title = row.querySelector("summary .title");
  if (isThere && !mark) title?.append(" ", element("span", { class: "folded", text: "match inside" }));
  else if (!isThere && mark) title.replaceChildren(entry.title);
}

/** The row of a record {entry, text, open}, which keeps whether the reader opened it. */
export function entryRow(record, onResized) {
  const { entry } = record;
  const head = [
    element("time", { text: timeOfDay(entry.at), datetime: new Date(entry.at).toISOString() }),
    element("span", { class: "kind", text: kindOf(entry) }),
    element("span", { class: "title", text: entry.title }),
  ];
  const row = element("article",
    { "data-kind": entry.kind, "data-level": entry.level, "aria-label": `${kindOf(entry)}: ${entry.title}`, tabindex: "-1" },
    isEmpty(entry.body) ? element("div", { class: "line" }, ...head) : details(record, head, onResized));
  records.set(row, record);
  return row;
}
