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

/** What to find an element again by, also on a screen that was built anew; for `enterScreen`. */
export function markOf(element) {
  if (!element) return undefined;
  const mark = { id: element.id, tag: element.tagName, name: nameOf(element) };
  return { ...mark, rank: alike(mark).indexOf(element), back: element === backButton() };
}

const find = (mark) => mark && (document.getElementById(mark.id) ?? alike(mark)[mark.rank]);

/** Another screen is painted, to which the element with the mark `led` led, where it is known. */
export function enterScreen({ colours, frame }, led) {
  root.className = colours;
  screen.closest(".surface").className = `surface ${frame}`;
  const heading = screen.querySelector("h1, h2, h3, h4, h5, h6");
  const title = heading?.textContent || nameOfPage;
  document.title = title === nameOfPage ? title : `${title} – ${nameOfPage}`;
  announce(root.dataset.newScreen.replace("%1$@", () => title));
  if (led && !led.back) trail.push(led);
  const leftBy = led?.back ? operableIn(find(trail.pop())) : undefined;
  if (document.hasFocus()) focusOn(leftBy ?? heading ?? screen.firstElementChild); // or it takes it
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
