// The publisher's restrictions, a document that ships with the application, as its developer writes
// it.

import { act, showProblem } from "./connection.js";
import { draftOf, keepDraft, objectIn, replaceText, showStatus, textOf } from "./document.js";
import { byId, element, onPress, setText } from "./dom.js";
import { kNowhere, restrictionTypes, vendorIn, vendorText } from "./vendorlist.js";

const kMostRows = 200;
const editor = byId("restrictions-text");
let shippedText = "";
let shipped; // how many documents had shipped when it was fetched,
let latest; // and have now
let store; // of the installation
let vendorList;

const isObject = (value) => value !== null && typeof value === "object";

/** [purpose, vendor, type] of each, as the document has them. */
function restrictionsIn(document) {
  const purposes = document.publisher?.restrictions;
  return Object.entries(isObject(purposes) ? purposes : {}).flatMap(([purpose, vendors]) =>
    Object.entries(isObject(vendors) ? vendors : {}).map(([vendor, type]) => [purpose, vendor, type]));
}

function documentOrNone() {
  return editor.value.trim() === "" ? {} : objectIn(editor.value);
}

function edit(change) {
  const document = documentOrNone();
  document.version ??= 1;
  document.publisher ??= {};
  change(document.publisher.restrictions ??= {});
  replaceText(editor, textOf(document));
  changed();
}

function remove(purpose, vendor) {
  edit((restrictions) => {
    delete restrictions[purpose][vendor];
    if (Object.keys(restrictions[purpose]).length === 0) delete restrictions[purpose];
  });
}

function row([purpose, vendor, type]) {
  const text = `${purpose} ${vendorList?.purposes[purpose] ?? kNowhere}: ` +
    `${restrictionTypes[type] ?? `no type is ${JSON.stringify(type)}`} for ${vendorText(vendorList, Number(vendor))}`;
  const button = element("button", { type: "button", class: "small", text: "Remove", "aria-label": `Remove ${text}` });
  button.addEventListener("click", () => remove(purpose, vendor));
  return element("li", {}, element("span", { text }), button);
}

function statusOf(count) {
  if (editor.value !== shippedText) return "Edited. It ships with the next launch.";
  return count > 0 ? "This ships with the application, and holds from its next save on." : "The application ships none.";
}

function show(restrictions) {
  const more = restrictions.length - kMostRows;
  byId("restrictions").replaceChildren(...restrictions.slice(0, kMostRows).map(row),
    ...(more > 0 ? [element("li", { text: `and ${more} more` })] : []));
  showStatus(byId("restrictions-status"), statusOf(restrictions.length));
}

function check() {
  let isWrong = false;
  try {
    show(restrictionsIn(documentOrNone()));
  } catch (error) {
    isWrong = true;
    byId("restrictions").replaceChildren();
    showStatus(byId("restrictions-status"), error.message, "bad");
  }
  for (const control of [byId("restrictions-ship"), byId("restriction-form").querySelector("button")])
    control.disabled = isWrong;
}

function changed() {
  keepDraft("restrictions", store, editor.value, shippedText);
  check();
}

/** Takes up what ships, unless something is typed that it would replace, now or before a reload. */
async function takeUp() {
  const isFirst = shipped === undefined;
  shipped = latest;
  const response = await fetch("/api/restrictions").catch(() => undefined);
  if (!response?.ok) return showProblem("The studio does not answer.");
  const before = shippedText;
  shippedText = await response.text();
  if (isFirst) editor.value = draftOf("restrictions", store)?.text ?? shippedText;
  else if (editor.value === before) editor.value = shippedText;
  setText(byId("restrictions-count"), shippedText === "" ? "" : String(restrictionsIn(objectIn(shippedText)).length));
  check();
  return undefined;
}

function add(event) {
  event.preventDefault();
  const vendor = vendorIn(byId("restriction-vendor").value);
  if (!(vendor > 0)) return showProblem("Say the vendor's ID, or choose one by its name.");
  edit((restrictions) => {
    (restrictions[byId("restriction-purpose").value] ??= {})[vendor] = Number(byId("restriction-type").value);
  });
  byId("restriction-vendor").value = "";
  return undefined;
}

async function ship() {
  const [text, whose] = [editor.value, store];
  if (await act("restrictions", text)) keepDraft("restrictions", whose, text, text);
}

export function wireRestrictions() {
  byId("restriction-type").replaceChildren(...restrictionTypes.map((text, type) =>
    element("option", { value: type, text })));
  editor.addEventListener("input", changed);
  byId("restriction-form").addEventListener("submit", add);
  byId("restrictions-revert").addEventListener("click", () => { replaceText(editor, shippedText); changed(); });
  onPress(byId("restrictions-ship"), ship);
}

function offerPurposes() {
  byId("restriction-purpose").replaceChildren(...Object.entries(vendorList?.purposes ?? {})
    .map(([id, name]) => element("option", { value: id, text: `${id} ${name}` })));
}

/** Another page may have shipped a document: what is being edited here stays. */
export function renderRestrictions({ application, code, session }) {
  byId("tab-restrictions").hidden = !session.iab;
  const list = session.iab ? application?.vendorList : undefined;
  if (list?.version !== vendorList?.version) {
    vendorList = list;
    offerPurposes();
    check();
  }
  if (!session.iab || code.restrictionsShipped === shipped) return;
  store = session.store;
  latest = code.restrictionsShipped;
  takeUp();
}
