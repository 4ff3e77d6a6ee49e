// Where the constraints of a screen put its views, solved to the letter by another's solver.
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

/// `views` as the server describes them; `sizes` what the content of each asks for, {width, height},
/// either of which may be missing. Gives {left, top, width, height} of each, in the root's points.
export function solved(views, sizes, root) {
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
      } else {
        const right = second === null ? new Expression(points) : side(second, two).plus(points);
        hold(side(first, one), relations[relation], right, priority);
      }
    }
  solver.updateVariables();
  return boxes.map((box) => Object.fromEntries(
    ["left", "top", "width", "height"].map((name) => [name, box[name].value()])));
}
