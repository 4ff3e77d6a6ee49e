// A list of thousands of rows, of which only those near the view are in the page. A row is as high as
// it comes out; one that was not in the page yet counts as low as one can be, so that rather too many are
// made than too few.
//
// The list follows its end until the reader goes elsewhere, by scrolling or to a row, and again once
// they are back there. What comes, goes or grows elsewhere does not move what is being read.

const kReach = 0.5; // of the view's height: what is in the page above and below it
const kNearEnd = 4; // points
const kMostPasses = 10; // until all heights are known
const kLowest = 20; // points; no row is lower

export class VirtualList {
  #view;
  #box = document.createElement("div");
  #rowOf;
  #targetOf;
  #onShown;

  #items = [];
  #rows = new Map(); // of the items that are in the page
  #heights = new WeakMap(); // of the items that were
  #tops = [0]; // of every item, and where the last one ends
  #width = 0;

  #following = true;
  #current; // the item that Tab leads to; always in the page
  #anchor; // the item that keeps its place,
  #offset = 0; // from its top to the view's
  #placed = 0; // where the view was scrolled to last

  /**
   * A list in `view`, the element that scrolls. `rowOf` makes the element of an item, `targetOf` says
   * what of a row takes the focus. `onShown` is called when other rows are in the page, or the list
   * begins or ends to follow.
   */
  constructor(view, { rowOf, targetOf, onShown }) {
    this.#view = view;
    this.#rowOf = rowOf;
    this.#targetOf = targetOf;
    this.#onShown = onShown;
    this.#box.className = "rows";
    this.#box.role = "presentation";
    view.append(this.#box);
    view.addEventListener("scroll", () => this.#scrolled());
    view.addEventListener("keydown", (event) => this.#pressed(event));
    view.addEventListener("focusin", ({ target }) => this.#focused(target));
    new ResizeObserver(() => requestAnimationFrame(() => this.#resized())).observe(view);
  }

  /** Whether the end is out of view, and what comes there is not followed. */
  get isBehind() { return !this.#following && !this.#isAtEnd(); }

  /** The elements of the rows that are in the page. */
  get rows() { return [...this.#rows.values()]; }

  /** Shows these items. The array may grow, and lose its first ones, until the next call. */
  show(items) {
    const hadFocus = this.#hasFocus();
    const there = new Set(items);
    this.#current = this.#standIn(this.#current, items, there);
    this.#anchor = this.#standIn(this.#anchor, items, there);
    this.#items = items;
    this.#render();
    if (hadFocus && !this.#hasFocus()) this.#focus();
  }

  /** The reader made a row higher or lower. */
  resized() {
    this.#following = false;
    this.#render();
    this.#following = this.#isAtEnd();
    this.#onShown();
  }

  /** Goes to an item. */
  to(item) { this.#go(this.#items.indexOf(item)); }

  /** Goes to the end, and follows it. */
  toEnd() { this.#go(this.#items.length - 1); }

  #hasFocus() { return this.#box.contains(document.activeElement); }

  #isAtEnd() {
    return this.#tops.at(-1) - this.#view.scrollTop - this.#view.clientHeight < kNearEnd;
  }

  // The next one that is still there, for an item that goes.
  #standIn(item, items, there) {
    if (item === undefined || there.has(item)) return item;
    if (items === this.#items) return items[0];
    return this.#items.slice(this.#items.indexOf(item)).find((each) => there.has(each)) ?? items.at(-1);
  }

  #focus() {
    const row = this.#rows.get(this.#current);
    if (row) this.#targetOf(row).focus({ preventScroll: true });
  }

  // The first item that ends below this place.
  #indexAt(place) {
    let low = 0;
    let high = this.#items.length - 1;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.#tops[middle + 1] > place) high = middle;
      else low = middle + 1;
    }
    return low;
  }

  #isInView(index) {
    const { scrollTop, clientHeight } = this.#view;
    return this.#tops[index + 1] > scrollTop && this.#tops[index] < scrollTop + clientHeight;
  }

  #render() {
    if (this.#view.clientHeight === 0) return; // nothing of it is shown
    let passes = 0;
    do {
      this.#lay();
      this.#fill();
      passes += 1;
    } while (this.#measure() && passes < kMostPasses);
    this.#settle();
    this.#onShown();
  }

  #lay() {
    let end = 0;
    this.#tops = [0];
    for (const item of this.#items)
      this.#tops.push(end += this.#heights.get(item) ?? kLowest);
    this.#box.style.height = `${end}px`;
    const index = this.#items.indexOf(this.#anchor);
    this.#view.scrollTop = this.#following || index < 0 ? end : this.#tops[index] + this.#offset;
  }

  #indicesInPage() {
    if (this.#items.length === 0) return [];
    const { scrollTop, clientHeight } = this.#view;
    const first = this.#indexAt(scrollTop - kReach * clientHeight);
    const last = this.#indexAt(scrollTop + (1 + kReach) * clientHeight);
    const indices = Array.from({ length: last - first + 1 }, (_, step) => first + step);
    const current = this.#items.indexOf(this.#current);
    if (current >= 0 && current < first) indices.unshift(current);
    if (current > last) indices.push(current);
    return indices;
  }

  #fill() {
    const indices = this.#indicesInPage();
    const wanted = new Set(indices.map((index) => this.#items[index]));
    for (const [item, row] of this.#rows)
      if (!wanted.has(item)) {
        row.remove();
        this.#rows.delete(item);
      }
    let next = this.#box.firstElementChild;
    for (const index of indices) {
      const item = this.#items[index];
      const row = this.#rows.get(item) ?? this.#rowOf(item);
      if (row === next) next = row.nextElementSibling; // one that has the focus is not touched
      else this.#box.insertBefore(row, next);
      this.#rows.set(item, row);
      row.style.top = `${this.#tops[index]}px`;
      row.ariaPosInSet = index + 1;
      row.ariaSetSize = this.#items.length;
    }
  }

  // Whether a row came out other than it was laid.
  #measure() {
    let differs = false;
    for (const [item, row] of this.#rows) {
      const height = Math.ceil(row.getBoundingClientRect().height); // a view scrolls by whole points
      differs ||= height !== (this.#heights.get(item) ?? kLowest);
      this.#heights.set(item, height);
    }
    return differs;
  }

  // What is in view is what is to stay there.
  #settle() {
    this.#placed = this.#view.scrollTop;
    if (this.#items.length === 0) return;
    const current = this.#items.indexOf(this.#current);
    const index = current >= 0 && this.#isInView(current) ? current : this.#indexAt(this.#placed);
    this.#anchor = this.#items[index];
    this.#offset = this.#placed - this.#tops[index];
    if (!this.#hasFocus()) this.#current = this.#following ? this.#items.at(-1) : this.#anchor;
    this.#leadTab();
  }

  #leadTab() {
    for (const [item, row] of this.#rows)
      this.#targetOf(row).tabIndex = item === this.#current ? 0 : -1;
  }

  #scrolled() {
    if (this.#view.scrollTop === this.#placed) return; // which is where it was put
    this.#following = this.#isAtEnd();
    this.#settle();
    this.#render();
  }

  #resized() {
    if (this.#view.clientWidth !== this.#width) {
      this.#width = this.#view.clientWidth;
      this.#heights = new WeakMap();
    }
    this.#render();
  }

  #focused(target) {
    for (const [item, row] of this.#rows)
      if (item !== this.#current && row.contains(target)) {
        this.#current = item;
        this.#following = item === this.#items.at(-1) && this.#isAtEnd();
        this.#settle();
        this.#onShown();
        return;
      }
  }

  #go(wanted) {
    if (this.#items.length === 0) return;
    const last = this.#items.length - 1;
    const index = Math.max(0, Math.min(wanted, last));
    this.#following = index === last;
    this.#current = this.#items[index];
    this.#reveal(index);
    this.#reveal(index); // its height is known now
    this.#focus();
  }

  #reveal(index) {
    const { scrollTop, clientHeight } = this.#view;
    const [top, end] = this.#tops.slice(index, index + 2);
    this.#anchor = this.#items[index];
    if (top < scrollTop) this.#offset = 0;
    else this.#offset = Math.min(0, Math.max(scrollTop - top, end - top - clientHeight));
    this.#render();
  }

  #pressed(event) {
    if (event.altKey || event.ctrlKey || event.metaKey || event.shiftKey) return;
    const current = this.#items.indexOf(this.#current);
    const { scrollTop, clientHeight } = this.#view;
    const top = this.#tops[current];
    const end = this.#tops[current + 1];
    const goals = {
      ArrowDown: () => current + 1,
      ArrowUp: () => current - 1,
      PageDown: () => Math.max(current + 1, this.#indexAt(top + clientHeight)),
      PageUp: () => Math.min(current - 1, this.#indexAt(top - clientHeight)),
      Home: () => 0,
      End: () => this.#items.length - 1,
    };
    // A row that is higher than the view is read to its end first.
    const isCut = this.#isInView(current) &&
      (event.key === "ArrowDown" ? end > scrollTop + clientHeight + 1 : event.key === "ArrowUp" && top < scrollTop - 1);
    if (!goals[event.key] || isCut) return;
    event.preventDefault();
    this.#go(goals[event.key]());
  }
}
