// Marks what is searched for in the page without touching its elements.

const kName = "found";
const kMostMarks = 2000;

function* textsIn(root) {
  const walker = document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) yield walker.currentNode;
}

// Texts may be parted by markup, so those of a root are searched as one.
function* rangesIn(root, pattern) {
  const nodes = [...textsIn(root)];
  const starts = [0];
  for (const { data } of nodes) starts.push(starts.at(-1) + data.length);
  let index = 0;
  const pointAt = (place, isEnd) => {
    while (starts[index + 1] < place + (isEnd ? 0 : 1)) index += 1;
    return [nodes[index], place - starts[index]];
  };
  for (const match of nodes.map(({ data }) => data).join("").matchAll(pattern)) {
    const range = new Range();
    range.setStart(...pointAt(match.index, false));
    range.setEnd(...pointAt(match.index + match[0].length, true));
    yield range;
  }
}

/** Marks every `wanted` in these elements, whatever its case; nothing when that is empty. */
export function highlight(roots, wanted) {
  if (!globalThis.CSS?.highlights) return; // the browser cannot
  CSS.highlights.delete(kName);
  if (wanted === "") return;
  const pattern = new RegExp(wanted.replace(/[\\^$.*+?()[\]{}|/]/g, "\\$&"), "giu");
  const ranges = [];
  for (const root of roots)
    for (const range of rangesIn(root, pattern)) {
      ranges.push(range);
      if (ranges.length === kMostMarks) break;
    }
  CSS.highlights.set(kName, new Highlight(...ranges));
}
