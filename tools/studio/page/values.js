// Keys and values of the store and of the tag SDK's data.

import { element } from "./dom.js";
import { keyNames } from "./vendorlist.js";

const kLongest = 160; // characters of a value

/** Code that may be broken after each ";" of a list and before each word of a name. */
export function breakable(text) {
  const parts = text.split(/(?<=;)|(?<=[a-z_])(?=[A-Z])/);
  return element("code", {}, ...parts.flatMap((part) => [part, element("wbr")]));
}

/** A value, folded where it is long. */
export function valueOf(text) {
  if (text === "") return element("em", { text: "empty" });
  if (text.length <= kLongest) return breakable(text);
  return element("details", {}, element("summary", { text: `${text.length} characters` }), breakable(text));
}

/** The key of a row, over what `names` calls it. */
export function keyOf(key, names) {
  const name = names[key] ? [element("small", { text: names[key] })] : [];
  return element("th", { scope: "row" }, breakable(key), ...name);
}

/** What the vendor list in force, or the privacy configuration, calls the keys. */
export const namesOf = ({ vendorList, configuration }) =>
  (vendorList ? keyNames(vendorList) : configuration?.names ?? {});
