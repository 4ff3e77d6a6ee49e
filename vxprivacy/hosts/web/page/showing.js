// Brings the page up to date.

import { updateHint } from "./hints.js";
import { announce } from "./notices.js";
import { enterScreen, markOf } from "./screens.js";
import { forgetSearch, searchAgain } from "./search.js";

const rules = new CSSStyleSheet();
document.adoptedStyleSheets = [...document.adoptedStyleSheets, rules];

/**
 * Shows the patch that answers `event`. Switches that the user set since, `wanted`, stay as the user
 * wants them: their answers are still to come.
 */
export function show(patch, { event, wanted }) {
  const focused = document.activeElement?.id;
  const led = patch.screen && markOf(document.getElementById(event.tap));
  for (const rule of patch.rules ?? []) rules.insertRule(rule, rules.cssRules.length);
  for (const markup of patch.own ?? []) showElement(markup, false);
  for (const markup of patch.whole ?? []) showElement(markup, true);
  if (patch.screen) forgetSearch();
  else if (patch.own || patch.whole) searchAgain();
  updateHint(Boolean(patch.screen));
  for (const [ids, on] of [[patch.on, true], [patch.off, false]])
    for (const id of ids ?? []) setSwitch(id, on);
  for (const [id, text] of Object.entries(patch.texts ?? {})) setText(id, text);
  for (const { set, on } of wanted) setSwitch(set, on);
  for (const [id, [x, y]] of Object.entries(patch.scroll ?? {}))
    document.getElementById(id)?.scrollTo(x, y);
  if (patch.screen) enterScreen(patch.screen, led);
  else if (focused && document.activeElement?.id !== focused)
    document.getElementById(focused)?.focus({ preventScroll: true });
  if (patch.say) announce(patch.say);
  for (const address of patch.open ?? []) openOutside(address);
}

function setSwitch(id, on) {
  const control = document.getElementById(id);
  if (control) control.checked = on;
}

function setText(id, text) {
  const element = document.getElementById(id);
  if (element) element.textContent = text;
}

// The markup is the host's, every text in it escaped. Without `whole`, what a container holds stays.
function showElement(markup, whole) {
  const template = document.createElement("template");
  template.innerHTML = markup;
  const shown = template.content.firstElementChild;
  const element = document.getElementById(shown.id);
  if (!element) return;
  if (element.tagName !== shown.tagName) return element.replaceWith(shown);
  for (const name of element.getAttributeNames())
    if (!shown.hasAttribute(name)) element.removeAttribute(name);
  for (const { name, value } of shown.attributes)
    if (element.getAttribute(name) !== value) element.setAttribute(name, value);
  if (whole || !element.classList.contains("view")) element.replaceChildren(...shown.childNodes);
  if ("checked" in element) element.checked = shown.checked;
}

function openOutside(address) {
  try {
    window.open(address, "_blank", "noopener,noreferrer");
  } catch (error) {
    console.warn(error); // no address after all; the rest of the page has to go on
  }
}
