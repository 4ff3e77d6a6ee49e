// What the application's own code decides in IAB mode.

import { act } from "./connection.js";
import { byId, element } from "./dom.js";

const names = new Intl.DisplayNames("en", { type: "language" });
const nameIn = (code) => new Intl.DisplayNames(code, { type: "language" }).of(code);
const english = { code: "en", text: "English" };
let offered = "";
let language = "en";
let publisherTC = false;
let inForce = false;

function offerLanguages(codes) {
  if (offered === String(codes)) return;
  offered = String(codes);
  const translations = codes.map((code) => ({ code, text: `${names.of(code)} (${nameIn(code)})` }))
    .sort((a, b) => a.text.localeCompare(b.text, "en"));
  byId("language").replaceChildren(...[english, ...translations].map(({ code, text }) =>
    element("option", { value: code, lang: code, text })));
}

export function wireCode() {
  byId("language").addEventListener("change", async (event) => {
    if (!await act("language", { code: event.target.value })) event.target.value = language;
  });
  byId("publisher-tc").addEventListener("click", () => act("publisher-tc", { on: !publisherTC }));
  byId("in-force").addEventListener("click", () => act("in-force", { on: !inForce }));
}

export function renderCode({ code, session }) {
  byId("code").hidden = !session.iab;
  offerLanguages(session.vendorList?.languages ?? []);
  language = code.language;
  byId("language").value = language;
  publisherTC = code.publisherTC;
  byId("publisher-tc").setAttribute("aria-checked", String(publisherTC));
  inForce = code.inForce;
  byId("in-force").setAttribute("aria-checked", String(inForce));
}
