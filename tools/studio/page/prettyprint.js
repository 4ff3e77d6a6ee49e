// JSON values as a reader likes to see them.

import { element } from "./dom.js";

const kMostMarked = 50_000; // characters; tokens are elements

/** Texts that hold JSON, shown as what they hold. */
function unfolded(value) {
  if (typeof value === "string" && /^[[{]/.test(value)) {
    try { return JSON.parse(value); } catch { return value; }
  }
  if (value === null || typeof value !== "object" || Array.isArray(value)) return value;
  return Object.fromEntries(Object.entries(value).map(([key, member]) => [key, unfolded(member)]));
}

function token(text, next) {
  if (!text.startsWith('"')) return "literal";
  return /^\s*:/.test(next) ? "key" : "string";
}

/** A value as indented JSON with its tokens marked. */
export function prettyPrinted(value) {
  const pre = element("pre");
  const text = JSON.stringify(unfolded(value), null, 2);
  let end = text.length > kMostMarked ? text.length : 0;
  if (end) pre.append(text);
  for (const match of text.slice(end).matchAll(/"(?:[^"\\]|\\.)*"|true|false|null|-?\d[\d.eE+-]*/g)) {
    const after = match.index + match[0].length;
    pre.append(text.slice(end, match.index),
      element("span", { class: token(match[0], text.slice(after, after + 4)), text: match[0] }));
    end = after;
  }
  pre.append(text.slice(end));
  return pre;
}
