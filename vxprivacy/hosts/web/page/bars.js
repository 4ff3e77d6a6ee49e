// Buttons stand side by side while each has room for its longest word, else one below the other.

const padding = 6; // points, of which no word makes use

const sizes = new ResizeObserver((entries) => {
  const bars = entries.map(({ target }) => target).filter(({ isConnected }) => isConnected);
  for (const bar of bars) bar.classList.remove("stacked");
  for (const bar of bars.filter(hasLongWord)) bar.classList.add("stacked");
});

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
  for (const bar of screen.querySelectorAll(".bar, .feet")) sizes.observe(bar);
}
