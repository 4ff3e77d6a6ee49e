// The tag SDK, the store and the engine as they are.

import { byId, element, fillList, setText } from "./dom.js";
import { act } from "./connection.js";
import { keyOf, namesOf, valueOf } from "./values.js";

const kLatestHits = 5;
const kMostShown = 8; // of a list
const hits = [];
const tables = new Map(); // what each shows

export function wireInspector() {
  byId("hit-form").addEventListener("submit", (event) => {
    event.preventDefault();
    act("hit", { name: byId("hit-name").value });
  });
}

/** Rows [key, value] with the category's name under its key; what changed lights up once. */
function fillTable(table, rows, names) {
  const body = table.tBodies[0];
  const content = JSON.stringify([rows, names]);
  if (tables.get(table) === content) return;
  tables.set(table, content);
  const before = new Map([...body.rows].map((row) => [row.dataset.key, row.dataset.value]));
  const first = before.size === 0;
  body.replaceChildren(...rows.map(([key, value]) => {
    return element("tr", {
      "data-key": key, "data-value": value,
      class: !first && before.get(key) !== value ? "changed" : undefined,
    }, keyOf(key, names), element("td", {}, valueOf(value)));
  }));
  if (rows.length === 0)
    body.append(element("tr", {}, element("td", { colspan: "2", class: "nothing", text: "Nothing yet" })));
}

function shown(value) {
  if (Array.isArray(value))
    return value.length === 0 ? "none" : value.slice(0, kMostShown).join(", ") +
      (value.length > kMostShown ? ` and ${value.length - kMostShown} more` : "");
  return value === null ? "null" : String(value);
}

function fillProperties(list, object) {
  fillList(list, Object.entries(object).map(([name, value]) =>
    [name, shown(value), value === true || value === 1 ? "yes" : undefined]));
}

/** A hit of the timeline joins the latest ones. */
export function addHit(entry) {
  hits.unshift(entry);
  hits.length = Math.min(hits.length, kLatestHits);
  byId("hits").replaceChildren(...hits.map(({ body }) => element("li", { "data-sent": body.sent },
    element("span", { class: "outcome", text: body.sent ? "sent" : "dropped" }),
    element("code", { text: body.name }),
    element("span", { class: "with", text: body.sent ? `with ${Object.keys(body.data).length} data` : "" }))));
}

export function renderInspector({ application, process }) {
  if (!application) return;
  const { sdk, engine, answers, storeProblem } = application;
  const store = application.store ?? []; // it may not be readable
  const names = namesOf(application);
  const on = sdk.on && process?.running;
  setText(byId("sdk-switch"), on ? "On" : "Off");
  byId("sdk-switch").dataset.tone = on ? "good" : "neutral";
  fillList(byId("sdk-numbers"), [["Hits sent", sdk.sent], ["Hits dropped", sdk.dropped]]);
  fillTable(byId("permanent-data"), sdk.permanentData, names);
  setText(byId("store-count"), String(store.length));
  byId("store-problem").hidden = storeProblem === "";
  setText(byId("store-problem"), `It cannot be ${application.store ? "written" : "used"} (${storeProblem}). ` +
    `The application goes on from memory, which ends with it, and tries again.${application.store ? " Below stands what the file has." : ""}`);
  fillTable(byId("store"), store, names);
  fillProperties(byId("engine"), engine);
  fillProperties(byId("answers"), answers);
}
