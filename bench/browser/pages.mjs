// What the screens are compared with: pages written by hand for the same texts, and klaro's list.
import { once } from "node:events";
import { readFile } from "node:fs/promises";
import { createServer } from "node:http";

const escaped = (text) => text.replace(/[&<>"]/g, (letter) => `&#${letter.charCodeAt(0)};`);

const look = `
  body { margin: 0; font: 17px/1.35 "Noto Sans", sans-serif; color: #17222b; }
  .row { display: grid; grid-template-columns: 1fr auto; gap: 8px; padding: 8px; }
  .row.vendor { grid-template-columns: auto 1fr; border: 1px solid #d3dbe1; margin-top: 8px; }
  .row h2, .row h3 { margin: 0; font-size: 15px; }
  .row h3 { padding-left: 10px; }
  .row p { margin: 0; grid-column: 1 / -1; color: #4a5966; }
  .row.vendor h2 { grid-column: 1 / -1; }
  .row.vendor p { grid-column: 2; }
  .row button { grid-column: 2; justify-self: end; border: 0; background: none; color: #0d66a6; }
  .row input { appearance: none; margin: 0; width: 38px; height: 23px; border-radius: 12px; background: #6f7f8c; }
  .row input::before { content: ""; display: block; width: 17px; height: 17px; margin: 3px; border-radius: 9px; background: #fff; }
  .row input:checked { background: #0d66a6; }`;

const html = (body) => `<!doctype html><html lang="en"><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1"><title>Privacy</title>
<link rel="stylesheet" href="look.css">${body}</html>`;

/// The texts of a configuration, a grid a row.
export function categoryPage({ information, global_consent, categories }) {
  const row = (heading, { name, description }) => `<div class="row"><${heading}>${escaped(name)}</${heading}>
<input type="checkbox" role="switch" aria-label="${escaped(name)}"><p>${escaped(description)}</p></div>`;
  const rows = [row("h2", global_consent), ...categories.flatMap((category) =>
    [row("h2", category), ...category.subcategories.map((each) => row("h3", each))])];
  return html(`<p>${escaped(information.content)}</p>${rows.join("\n")}`);
}

/// Vendors, {name, label, details} each; `label` is missing where there is nothing to choose.
export function vendorPage(vendors) {
  const row = ({ name, label, details }) => `<div class="row vendor" role="listitem"><h2>${escaped(name)}</h2>` +
    (label ? `<input type="checkbox" role="switch" aria-label="${escaped(name)}"><p>${escaped(label)}</p>` : "") +
    `<button type="button">${escaped(details)}</button></div>`;
  const list = JSON.stringify(vendors.map(row).join("")).replaceAll("</", "<\\/");
  return html(`<button id="open">Partners</button><div role="list"></div><script>
const list = ${list};
document.getElementById("open").onclick = () => { document.querySelector("[role=list]").innerHTML = list; };
</script>`);
}

/// klaro, whose script's file is `file`, with a flat list of as many services, which its notice leads to.
export async function klaroPage(file, vendors) {
  const script = await readFile(file, "utf8");
  const configuration = { version: 1, groupByPurpose: false, services: vendors.map(({ name }, i) =>
    ({ name: `vendor${i}`, title: name, purposes: ["advertising"] })) };
  return html(`<script>var klaroConfig = ${JSON.stringify(configuration).replaceAll("<", "\\u003c")};</script>
<script>${script.replaceAll("</script", "<\\/script")}</script>`);
}

/// Serves a page and its style sheet; resolves to the page's address.
export async function serveText(scope, text) {
  const server = createServer(({ url }, response) => {
    const isSheet = url === "/look.css";
    response.setHeader("Content-Type", `text/${isSheet ? "css" : "html"}; charset=utf-8`);
    response.end(isSheet ? look : text);
  }).listen(0, "127.0.0.1");
  scope.after(() => { server.closeAllConnections(); server.close(); });
  await once(server, "listening");
  return `http://127.0.0.1:${server.address().port}/`;
}
