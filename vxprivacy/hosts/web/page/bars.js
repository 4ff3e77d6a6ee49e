// Buttons stand side by side while each has room for its longest word, else one below the other.

const selector = ".bar, .feet";
const padding = 6; // points, of which no word makes use

const title = document.getElementById("title"); // as high as the user's letters, which a button need not be

const sizes = new ResizeObserver((entries) => {
  const changed = entries.map(({ target }) => target);
  arrange(changed.includes(title) ? [...document.querySelectorAll(selector)] : changed);
});
sizes.observe(title);

function arrange(bars) {
  for (const bar of bars) bar.classList.remove("stacked");
  for (const bar of bars.filter(hasLongWord)) bar.classList.add("stacked");
}

// Beside each other buttons break no words: the widest line shows.
function hasLongWord(bar) {
  const line = document.createRange();
  return [...bar.children].some((button) => {
    line.selectNodeContents(button);
    return line.getBoundingClientRect().width > button.clientWidth - padding;
  });
}

/** Has the bars of a screen arranged, now and whenever they or their texts change in size. */
export function arrangeBars(screen) {
  for (const bar of screen.querySelectorAll(selector)) sizes.observe(bar);
}
