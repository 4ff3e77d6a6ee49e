import { after, test } from "node:test";
import assert from "node:assert/strict";
import { closeBrowser, open, recorded, serve, tap } from "./browser.mjs";

after(closeBrowser);

const evil = `<script>document.title="run"</script><img src=x onerror="document.title='run'">` +
  `"' onfocus="document.title='run'" autofocus </textarea></style></main>&lt;b&gt;\${1}{{2}}`;

const row = (ID, more = {}) => ({ ID, name: evil, description: evil,
  privacy_policy_url: evil, privacy_policy_text: evil, ...more });
const configuration = {
  information: { version: 1, content: evil, privacy_policy_url: "javascript:document.title='run'",
    privacy_policy_text: evil, saveButton: evil },
  global_consent: { name: evil, description: evil },
  categories: [
    row("1", { subcategories: [row("11", { privacy_policy_url: "javascript:alert(1)" })] }),
    row("2", { privacy_policy_url: "data:text/html,hello" }),
    row("3", { privacy_policy_url: "HTTPS://policy.example/" }),
  ],
  customisation: { content: { fontcolor: evil, bordercolor: "red;}" },
    button: { backgroundcolor: "</style>" } },
};

test("markup and script in every field are text", async (t) => {
  const page = await open(t, await serve(t, configuration));
  const texts = await page.locator(".label").evaluateAll((labels) =>
    labels.map((label) => label.lastChild.textContent)); // some have a count before
  assert.equal(texts.length, 11);
  for (const text of texts) assert.equal(text, evil);
  assert.equal(await page.locator("img, .surface script, textarea, style, b").count(), 0);
  const titles = await page.locator(".button").evaluateAll((buttons) =>
    buttons.map((button) => [...button.childNodes].map((node) => node.data ?? "").join("")));
  assert.deepEqual(titles, Array(5).fill(evil));
  await page.locator(".switch").first().click();
  await page.waitForFunction(() => !document.querySelector(".switch:checked")); // patched
  assert.equal(await page.title(), "Privacy settings");
  assert.deepEqual(page.failures, []);
});

test("only http, https and mailto open", async (t) => {
  const address = await serve(t, configuration);
  const page = await open(t, address);
  await page.context().route("https://policy.example/**", (route) => route.fulfill({ body: "" }));
  const opened = page.context().waitForEvent("page");
  const patches = [];
  for (const link of await page.getByRole("link").all()) patches.push(await tap(page, link));
  assert.deepEqual(patches, [{}, {}, {}, {}, { open: ["HTTPS://policy.example/"] }]);
  await (await opened).waitForURL("https://policy.example/"); // the first, and the last link's
  assert.equal(page.context().pages().length, 2);
  assert.equal(await page.title(), "Privacy settings");
  const asked = (await recorded(address)).filter((event) => event.open).map((event) => event.open);
  assert.deepEqual(asked, ["javascript:document.title='run'", "javascript:alert(1)",
    "data:text/html,hello", "HTTPS://policy.example/"]);
});
