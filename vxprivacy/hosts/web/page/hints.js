// Why answers have to wait is read below them; once they wake, that they do.

const screen = document.querySelector(".screen");
const hint = document.getElementById("waiting");

const anyWaits = () => screen.querySelector('.answer[aria-disabled="true"]') !== null;
let waited = anyWaits();

/** What waits may have changed, or with it the whole screen. */
export function updateHint(isNewScreen) {
  const waits = anyWaits();
  const list = screen.querySelector(".scroll");
  if (isNewScreen || waits) hint.classList.remove("over");
  else if (waited && list && list.scrollHeight > list.clientHeight) hint.classList.add("over");
  waited = waits;
}
