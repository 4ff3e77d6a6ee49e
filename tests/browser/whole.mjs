// Whether what a page shows can be read and operated: nothing is cut off, covered, too small to tap, or
// broken in the middle of a word without need.
import assert from "node:assert/strict";

function measure() {
  const boxes = [], cut = [], broken = [];
  const sheet = document.querySelector(".sheet").getBoundingClientRect();
  const own = ".naming > *, .find input, .found, .hint:not(#waiting), #waiting > p";
  for (const element of document.querySelectorAll(`.label, .button, .switch, ${own}`)) {
    const style = getComputedStyle(element);
    const { left, right, top, bottom, width, height } = element.getBoundingClientRect();
    if (width === 0 || height === 0 || style.visibility === "hidden") continue;
    const name = element.textContent.slice(0, 40) || element.id;
    // A switch takes taps on more than is drawn of it.
    const art = element.matches(".switch") ? parseFloat(getComputedStyle(element, "::before").height) : height;
    boxes.push({ id: element.id, name, left, right, top: top + (height - art) / 2,
      bottom: bottom - (height - art) / 2, width, height, scrolls: Boolean(element.closest(".scroll")),
      control: element.matches("button, input") });
    if (left < sheet.left - 0.5 || right > sheet.right + 0.5) cut.push(`${name}: ${left} to ${right}`);

    // Where there is only one button beside another, a column of them has more room.
    const column = element.closest(".bar, .feet")?.clientWidth - 16;
    const room = (column || element.clientWidth) - parseFloat(style.paddingLeft) - parseFloat(style.paddingRight);
    const range = document.createRange();
    const texts = document.createTreeWalker(element, NodeFilter.SHOW_TEXT);
    for (let text = texts.nextNode(); text; text = texts.nextNode()) {
      if (text.parentElement.closest(".unseen, .count")) continue;
      range.selectNodeContents(text);
      for (const line of range.getClientRects())
        if (line.width > 1 && (line.left < left - 1 || line.right > right + 1 ||
            line.top < top - 1 || line.bottom > bottom + 1)) cut.push(`${name}: text`);
      for (const { 0: word, index } of text.data.matchAll(/[\p{L}\p{N}]+/gu)) {
        if (/\p{sc=Han}/u.test(word)) continue; // breaks anywhere
        range.setStart(text, index);
        range.setEnd(text, index + word.length);
        const parts = [...range.getClientRects()].filter((part) => part.width > 0.5);
        const long = parts.reduce((sum, part) => sum + part.width, 0);
        if (parts.at(-1)?.top > parts[0]?.top + 2 && long <= room - 1) broken.push(`${name}: ${word}`);
      }
    }
  }
  const wide = [...document.querySelectorAll(".scroll"), document.documentElement]
    .filter((element) => element.scrollWidth > element.clientWidth).map((element) => element.id);
  const list = document.querySelector(".scroll");
  return { boxes, cut, wide, broken, whole: list.scrollHeight <= list.clientHeight,
    listShare: list.clientHeight / innerHeight };
}

function overlapping(boxes) {
  const pairs = [];
  boxes.forEach((a, i) => boxes.slice(i + 1).forEach((b) => {
    if (a.scrolls === b.scrolls && Math.min(a.right, b.right) - Math.max(a.left, b.left) > 0.5 &&
        Math.min(a.bottom, b.bottom) - Math.max(a.top, b.top) > 0.5)
      pairs.push(`${a.name} / ${b.name}`);
  }));
  return pairs;
}

/// What the page shows, and what is wrong with it.
export async function seen(page) {
  const { boxes, ...rest } = await page.evaluate(measure);
  const small = boxes.filter(({ control, width, height }) => control && (width < 44 || height < 44));
  return { boxes, ...rest, overlapping: overlapping(boxes), small: small.map(({ name }) => name) };
}

export async function expectWhole(page, where) {
  const found = await seen(page);
  for (const fault of ["cut", "wide", "broken", "overlapping", "small"])
    assert.deepEqual(found[fault], [], `${where}: ${fault}`);
  return found;
}
