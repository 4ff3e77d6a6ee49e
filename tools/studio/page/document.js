// A JSON document in a text area.

/** The object that the text holds; a SyntaxError says why there is none. */
export function objectIn(text) {
  const value = JSON.parse(text);
  if (value === null || typeof value !== "object" || Array.isArray(value))
    throw new SyntaxError("the document must be an object");
  return value;
}

export const textOf = (document) => `${JSON.stringify(document, null, 2)}\n`;

export function showStatus(status, text, tone = "neutral") {
  status.textContent = text;
  status.dataset.tone = tone;
}
