// Copies an entry of the timeline: as JSON, as a link to it, what the backend was asked as curl.

import { showProblem } from "./connection.js";
import { byId, element } from "./dom.js";
import { entryOf } from "./entryrow.js";

let backend = ""; // its address

const quoted = (text) => `'${text.replaceAll("'", "'\\''")}'`;

/** The command that asks the same of the backend; undefined where an entry is no request, or not whole. */
function asCurl({ kind, title, text }) {
  const path = kind === "request" && /^GET (\/\S*) /.exec(title)?.[1];
  if (backend && path) return `curl ${quoted(backend + path)}`;
  if (backend && kind === "beacon" && text !== undefined)
    return `curl -H 'Content-Type: application/json' --data-raw ${quoted(text)} ${quoted(`${backend}/privacy-consent/`)}`;
  return undefined;
}

const ways = [
  ["JSON", (entry) => JSON.stringify(entry, null, 2)],
  ["Link", ({ id }) => new URL(`#entry-${id}`, location.href).href],
  ["curl", asCurl],
];

async function copy(text, button) {
  const done = await globalThis.navigator.clipboard?.writeText(text).then(() => true, () => false);
  if (!done) return showProblem("The browser does not let this page copy.");
  button.textContent = "Copied";
  return undefined;
}

function buttonFor(name, textOf) {
  const button = element("button", { type: "button", class: "small", "aria-label": `Copy: ${name}` });
  button.addEventListener("click", () => copy(textOf(entryOf(button.closest("article"))), button));
  return button;
}

/** The buttons stand in the row that has the focus, or else the pointer. */
export function wireCopying() {
  const buttons = ways.map(([name, textOf]) => buttonFor(name, textOf));
  const tools = element("div", { class: "copying", role: "group", "aria-label": "Copy this entry" }, ...buttons);
  const place = ({ target }) => {
    const row = target.closest("article");
    if (!row || tools.parentElement === row || tools.querySelector(":focus-visible")) return;
    ways.forEach(([, textOf], index) => {
      buttons[index].hidden = textOf(entryOf(row)) === undefined;
      buttons[index].textContent = ways[index][0];
    });
    row.append(tools);
  };
  byId("timeline").addEventListener("focusin", place);
  byId("timeline").addEventListener("pointerover", place);
}

export function renderCopying({ network }) {
  backend = network?.address ?? "";
}
