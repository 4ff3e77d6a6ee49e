// From screen to screen: title, focus, announcement, and the ways back.

import { announce } from "./notices.js";

const root = document.documentElement;
const screen = document.querySelector(".screen");
const nameOfPage = document.title;

const trail = []; // what was operated on each screen to come to the next one

const backButton = () => screen.querySelector("[data-back]:not(:disabled)");

/** Works the screen's own way back, where it has one. */
export function goBack() {
  backButton()?.click();
}

const textOf = (element) => element?.ariaLabel ?? element?.textContent;
const nameOf = (element) => element.getAttribute("aria-labelledby")?.split(" ")
  .map((id) => textOf(document.getElementById(id))).join(" ") ?? element.textContent;

const alike = ({ tag, name }) =>
  [...screen.querySelectorAll(tag)].filter((element) => nameOf(element) === name);

const headingOf = () => screen.querySelector("h1, h2, h3, h4, h5, h6");
const titleOf = (heading) => heading?.textContent || nameOfPage;

/**
 * What to find an element again by, also on a screen that was built anew; for `enterScreen`. Without
 * an element it tells the screen alone.
 */
export function markOf(element) {
  const title = titleOf(headingOf());
  if (!element) return { title };
  const mark = { title, id: element.id, tag: element.tagName, name: nameOf(element) };
  return { ...mark, rank: alike(mark).indexOf(element), back: element === backButton() };
}

const find = (mark) =>
  mark?.id && (document.getElementById(mark.id) ?? alike(mark)[mark.rank]);

// What this screen was left by when it was shown before, and is entered by again: the way back leads
// there, any other way where the screen's own list was left. What came after is forgotten.
function leftBefore(led, title) {
  const at = trail.findLastIndex((mark) =>
    document.getElementById(mark.id) || (led.back && mark.title === title));
  const [mark] = at < 0 ? [] : trail.splice(at);
  if (!mark && !led.back) trail.push(led);
  const element = find(mark);
  return led.back || element?.closest(".scroll") ? element : undefined;
}

/** Another screen is painted, to which the element with the mark `led` led. */
export function enterScreen({ colours, frame }, led) {
  root.className = colours;
  screen.closest(".surface").className = `surface ${frame}`;
  const heading = headingOf();
  const title = titleOf(heading);
  document.title = title === nameOfPage ? title : `${title} – ${nameOfPage}`;
  announce(root.dataset.newScreen.replace("%1$@", () => title));
  const before = operableIn(leftBefore(led, title));
  if (document.hasFocus()) focusOn(before ?? heading ?? screen.firstElementChild); // or it takes it
  followInHistory();
}

const operableIn = (element) =>
  element?.tabIndex < 0 ? element.querySelector("a, button, [tabindex]") : element;

function focusOn(element) {
  if (element.tabIndex < 0) element.tabIndex = -1;
  element.focus();
}

// While the screen has a way back, the browser's Back is that way: it leaves an entry that stands
// for the screen.
function followInHistory() {
  const stands = Boolean(history.state?.screen);
  if (backButton() && !stands) history.pushState({ screen: true }, "");
  if (!backButton() && stands) history.back();
}

addEventListener("popstate", () => {
  if (!history.state?.screen) goBack();
  else followInHistory();
});
followInHistory();
