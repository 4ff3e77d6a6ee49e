// Where the constraints of a screen put its views, solved to the letter by another's solver, and where
// they are in Chromium.
import assert from "node:assert/strict";
import { Constraint, Expression, Operator, Solver, Strength, Variable } from "@lume/kiwi";

const relations = [Operator.Le, Operator.Eq, Operator.Ge]; // in the order of the server's numbers
const attributes = [null, "leading", "trailing", "top", "bottom", "width", "height", "centreX", "centreY"];

class Box {
  left = new Variable();
  top = new Variable();
  width = new Variable();
  height = new Variable();

  of(attribute) {
    switch (attribute) {
      case "leading": return new Expression(this.left);
      case "trailing": return new Expression(this.left, this.width);
      case "top": return new Expression(this.top);
      case "bottom": return new Expression(this.top, this.height);
      case "width": return new Expression(this.width);
      case "height": return new Expression(this.height);
      case "centreX": return new Expression(this.left, [0.5, this.width]);
      case "centreY": return new Expression(this.top, [0.5, this.height]);
    }
  }
}

const strength = (priority) =>
  priority >= 1000 ? Strength.required : Strength.create(0, priority, 0);

const isAsHighAsSwitch = (views, first, one, second, two) =>
  attributes[one] === "height" && attributes[two] === "height" && views[second].type === "switch" &&
  views[second].parent === first;

// A switch that reaches down to the end of its row, which grows with larger letters beside it.
const endsWithSwitch = (views, first, one, second, two) => second !== null &&
  attributes[one] === "bottom" && attributes[two] === "bottom" &&
  [[first, second], [second, first]].some(([row, inner]) =>
    views[inner].type === "switch" && views[inner].parent === row);

// `views` as the server describes them; `sizes` what the content of each asks for, {width, height},
// either of which may be missing. Gives {left, top, width, height} of each, in the root's points.
function solved(views, sizes, root) {
  const solver = new Solver();
  const boxes = views.map(() => new Box());
  const contents = views.map(({ type }) => (type === "scroll" ? new Box() : null));
  const hold = (left, relation, right, priority) => {
    try {
      solver.addConstraint(new Constraint(left, relation, right, strength(priority)));
    } catch {
      // one that contradicts the rules before it is broken, as the platform does it
    }
  };
  const equal = (variable, value, priority = 1000) =>
    hold(new Expression(variable), Operator.Eq, new Expression(value), priority);

  for (const [name, value] of Object.entries({ left: 0, top: 0, ...root }))
    equal(boxes[0][name], value);
  for (const [i, content] of contents.entries()) {
    if (!content) continue; // what scrolls begins where the scroll view does, and is as large as it is
    hold(content.of("leading"), Operator.Eq, boxes[i].of("leading"), 1000);
    hold(content.of("top"), Operator.Eq, boxes[i].of("top"), 1000);
  }
  for (const box of boxes)
    for (const side of ["width", "height"])
      hold(box.of(side), Operator.Ge, new Expression(0), 1000);
  for (const [i, { width, height }] of sizes.entries()) {
    if (width !== undefined) {
      const drawnInOneSize = views[i].type === "switch";
      hold(boxes[i].of("width"), Operator.Ge, new Expression(width), drawnInOneSize ? 999 : 750);
      hold(boxes[i].of("width"), Operator.Le, new Expression(width), drawnInOneSize ? 999 : 250);
    }
    if (height !== undefined) equal(boxes[i].height, height, 1000);
  }
  for (const [i, { constraints }] of views.entries())
    for (const [first, one, relation, second, two, constant, priority, share] of constraints) {
      const side = (item, attribute) =>
        (item === i && contents[i] && !["width", "height"].includes(attributes[attribute])
          ? contents[i] : boxes[item]).of(attributes[attribute]);
      const points = share ? constant * root.width : constant;
      if (isAsHighAsSwitch(views, first, one, second, two)) {
        // Such a row grows with a title that wraps, lest that lies over what comes next.
        hold(side(first, one), Operator.Ge, side(second, two), 1000);
        for (const [label, { type, parent }] of views.entries())
          if (parent === first && type === "label")
            hold(boxes[first].of("bottom"), Operator.Ge, boxes[label].of("bottom"), 1000);
        hold(side(first, one), relations[relation], side(second, two), 999);
      } else if (endsWithSwitch(views, first, one, second, two)) {
        const [row, inner] = views[first].parent === second ? [second, first] : [first, second];
        hold(boxes[row].of("bottom"), Operator.Ge, boxes[inner].of("bottom"), 1000);
        hold(side(first, one), relations[relation], side(second, two), 999);
      } else {
        const right = second === null ? new Expression(points) : side(second, two).plus(points);
        hold(side(first, one), relations[relation], right, priority);
      }
    }
  solver.updateVariables();
  return boxes.map((box) => Object.fromEntries(
    ["left", "top", "width", "height"].map((name) => [name, box[name].value()])));
}

// What is touched reaches beyond the box that is laid out, in points above and below.
const reach = { switch: [6.5, 6.5], link: [5, 1.5] };

// The boxes of all views, within the root, and how wide each would be in one line.
function measure(page) {
  return page.evaluate(() => {
    const boxOf = (element) => element.getBoundingClientRect();
    const elements = [...document.querySelectorAll(".surface [id], .surface[id]")]
      .filter(({ id }) => /^v\d+$/.test(id));
    const root = boxOf(elements[0]);
    const toRight = document.dir !== "rtl";
    const boxes = elements.map((element) => {
      const { left, right, top, width, height } = boxOf(element);
      const before = toRight ? left - root.left : root.right - right;
      const kind = element.matches(".switch") ? "switch"
        : element.matches(".leaves") ? "link" : "";
      const stacked = element.matches(".stacked");
      return { left: before, top: top - root.top, width, height, kind, stacked };
    });
    for (const { style } of elements)
      Object.assign(style, { width: "max-content", minWidth: 0, maxWidth: "none" });
    for (const [i, element] of elements.entries()) boxes[i].natural = boxOf(element).width;
    for (const { style } of elements) Object.assign(style, { width: "", minWidth: "", maxWidth: "" });
    return boxes;
  });
}

function laidOut(box) {
  const [above, below] = reach[box.kind] ?? [0, 0];
  return { ...box, top: box.top + above, height: box.height - above - below };
}

// Whether a rule holds the view to the end of its container.
const isHeldAtEnd = (views, i) => views[views[i].parent].constraints.some(([first, one, , second, two]) =>
  attributes[one] === "trailing" && attributes[two] === "trailing" && [first, second].includes(i));

// Nothing gets wider than its column: what is held at its beginning alone wraps there, and keeps the
// same gap at its end.
function fitsInto(boxes, views, i) {
  const right = (box) => box.left + box.width;
  const { type, parent } = views[i];
  if (parent === null) return true;
  const gap = isHeldAtEnd(views, i) ? 0 : boxes[i].left - boxes[parent].left;
  if (right(boxes[i]) + gap > right(boxes[parent])) return false;
  return type !== "label" || views.every((other, j) => other.parent !== parent ||
    other.type !== "switch" || right(boxes[i]) <= boxes[j].left);
}

// Buttons that stand one below the other, as long words want it, are let off their own rules.
function freed(views, boxes) {
  const stacked = (i) => i !== null && boxes[i].stacked;
  return views.map((view, i) => ({ ...view, constraints: stacked(i) ? []
    : view.constraints.filter(([first, one]) => !(stacked(first) && attributes[one] === "height")) }));
}

/// The boxes of a page in Chromium equal the solution of the constraints that its server has; gives
/// how many there are.
export async function expectSolvedBoxes(page, address) {
  const told = await (await fetch(`${address}/constraints`)).json();
  const boxes = (await measure(page)).map(laidOut);
  assert.equal(boxes.length, told.length);
  const views = freed(told, boxes);
  const sizes = boxes.map(({ natural, height, stacked }, i) => stacked ? { height }
    : views[i].type === "label" || views[i].type === "button" ? { width: natural, height }
      : views[i].type === "switch" ? { width: 51, height } : {});
  const wanted = solved(views, sizes, { width: boxes[0].width, height: boxes[0].height });
  const fits = (i) => fitsInto(wanted, views, i);
  const wrong = boxes.flatMap((box, i) => boxes[views[i].parent]?.stacked ? []
    : (fits(i) ? ["left", "top", "width", "height"] : ["left", "top", "height"])
      .filter((side) => !(Math.abs(box[side] - wanted[i][side]) <= 0.5))
      .map((side) => `${views[i].type} ${i}: ${side} is ${box[side]}, solved ${wanted[i][side]}`));
  assert.deepEqual(wrong, []);
  return boxes.length;
}
