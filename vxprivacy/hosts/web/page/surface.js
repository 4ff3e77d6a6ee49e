// The page's side of a WebSurface: hears what the user does. sending.js takes it to the host and
// showing.js shows what came of it.

import { arrangeBars } from "./bars.js";
import { aimAt, measureRuns } from "./runs.js";
import { goBack } from "./screens.js";
import { clearSearch } from "./search.js";
import { send, tapIsUnderWay, update } from "./sending.js";

export { update };

const operable = "button, .switch, [data-tap], [data-character]";
const scrollKeys = ["ArrowUp", "ArrowDown", "PageUp", "PageDown", "Home", "End", " "];

const screen = document.querySelector(".screen");
const list = () => screen.querySelector(".scroll");

// A title is a large place to tap for the switch that it names.
function switchNamedBy(label) {
  if (!label || !getSelection().isCollapsed) return null;
  return label.parentElement.querySelector(`:scope > .switch[aria-labelledby~="${label.id}"]`);
}

// Words that lead on are a part of their label, whose tap tells where they begin.
function tap(element) {
  const { character } = element.dataset;
  const { id } = element.closest("[id]");
  if (!tapIsUnderWay(id)) send(character ? { tap: id, character: Number(character) } : { tap: id });
}

screen.addEventListener("click", ({ target, detail }) => {
  const element = target.closest(operable);
  if (!element) switchNamedBy(target.closest(".label"))?.click();
  else if (element.matches(".switch")) send({ set: element.id, on: element.checked });
  else if (detail < 2 && element.ariaDisabled !== "true") tap(element); // no double click
});

document.addEventListener("keydown", (event) => {
  const { key, target, repeat, isComposing } = event;
  if (key === "Enter" && target.matches(operable)) {
    if (repeat) event.preventDefault(); // a key that is held is pressed once
    else if (!target.matches("button")) target.click();
  }
  if (key === "Escape" && !isComposing && !clearSearch()) goBack();
  if (scrollKeys.includes(key) && target === document.body) takeFocusToScroll();
  aimAt(target.matches("#find input") ? undefined : list(), key);
});

// Before the browser asks whom the key is for.
function takeFocusToScroll() {
  const scroller = list();
  if (scroller && !scroller.hasAttribute("tabindex")) scroller.tabIndex = -1;
  scroller?.focus({ preventScroll: true });
}

// A wheel that turns beside the list moves it too.
document.addEventListener("wheel", ({ target, deltaY, ctrlKey }) => {
  if (!ctrlKey && !target.closest(".scroll")) list()?.scrollBy(0, deltaY);
}, { passive: true });

// Where the content of a scroll view stands, and how much of how much is seen.
const pending = new Map();
const told = new WeakMap();
function tellScroll(element) {
  clearTimeout(pending.get(element));
  pending.delete(element);
  const { id, scrollLeft: x, scrollTop: y, clientHeight: frame, scrollHeight: content } = element;
  const event = { scroll: id, x, y, frame, content };
  const text = JSON.stringify(event);
  if (!element.isConnected || frame === 0 || told.get(element) === text) return;
  told.set(element, text);
  send(event);
}

// Once the movement rests; "scroll" does not bubble.
screen.addEventListener("scroll", ({ target: element }) => {
  if (!element.id) return;
  clearTimeout(pending.get(element));
  pending.set(element, setTimeout(tellScroll, 120, element));
}, true);

// First when they are laid out, then whenever the window, the text size or a patch changes them.
const sizes = new ResizeObserver((entries) => {
  const scrolls = new Set(entries.map(({ target }) => target.closest(".scroll")));
  scrolls.delete(null);
  scrolls.forEach(measureRuns);
  scrolls.forEach(tellScroll);
});
function observeSizes() {
  arrangeBars(screen);
  for (const scroll of screen.querySelectorAll(".scroll"))
    for (const element of [scroll, ...scroll.children]) sizes.observe(element);
}
new MutationObserver(observeSizes).observe(screen, { childList: true, subtree: true });
observeSizes();
if (!list()) send({}); // laid out, and nothing to measure

screen.disabled = false; // nothing that is tapped is lost from here on
