// What the user meets on the IAB center's screens.
import { after, test } from "node:test";
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { closeBrowser, iabSample, open, recorded, resize, serve, switchOf, tap, vendorList } from "./browser.mjs";

after(closeBrowser);

const configuration = JSON.parse(await readFile(iabSample, "utf8"));
const list = JSON.parse(await readFile(vendorList, "utf8"));
const vendors = Object.values(list.vendors).filter(({ deletedDate }) => !deletedDate);

const button = (page, name) => page.getByRole("button", { name, exact: true });
const heading = (page, name) => page.getByRole("heading", { name, exact: true }).first().waitFor();
const scrollTo = (page, share) => page.locator(".scroll").evaluate((element, part) =>
  element.scrollTo(0, part * (element.scrollHeight - element.clientHeight)), share);

async function openPurposes(t, own = configuration) {
  const address = await serve(t, own, "en", vendorList);
  const page = await open(t, address);
  await tap(page, button(page, "Details"));
  return page;
}

async function openVendors(t) {
  const page = await openPurposes(t);
  await tap(page, button(page, "Partners"));
  return page;
}

test("a row that opens is all that is patched, and nothing above it moves", async (t) => {
  const page = await openVendors(t);
  await scrollTo(page, 0.5);
  const details = button(page, "Details Kestrel DSP");
  await details.scrollIntoViewIfNeeded();
  const tops = () => page.evaluate(() => {
    const opened = document.activeElement.closest(".box");
    const rows = [...document.querySelectorAll(".searchable > .box")];
    for (const row of rows) row.known ??= true;
    return [...rows.slice(0, rows.indexOf(opened) + 1), document.activeElement]
      .map((element) => element.getBoundingClientRect().top);
  });
  await details.focus();
  const before = await tops();
  const id = await details.evaluate((element) => element.closest(".box").id);
  for (const expanded of ["true", "false", "true"]) {
    const patch = await tap(page, details);
    assert.deepEqual(Object.keys(patch).filter((key) => key !== "rules"), ["whole"]);
    assert.equal(patch.whole.length, 1);
    assert.match(patch.whole[0], new RegExp(`^<div id="${id}"`));
    assert.equal(await details.getAttribute("aria-expanded"), expanded);
    assert.deepEqual(await tops(), before);
    assert.equal(await details.evaluate((element) => element === document.activeElement), true);
  }
  assert.equal(await page.locator(`#${id}`).getByRole("heading", { name: "Privacy policy" }).count(), 1);
  assert.deepEqual(page.failures, []);
});

test("the partners' words lead on by mouse, on either line, by keyboard and by a reader's click", async (t) => {
  const words = "our partners and all of the other companies that work with them";
  const texts = { ...configuration.texts,
    generic: { ...configuration.texts.generic, partnersLinkText: words },
    popup: { ...configuration.texts.popup, title: `We and ${words}`,
      purposeTitle: `What we and ${words} ask for`, content: `We and ${words} ask you. And so on.` } };
  const address = await serve(t, { ...configuration, texts }, "en", vendorList);
  const page = await open(t, address, { width: 320 });
  assert.equal(await page.locator("h1 a").count(), 0, "not in the title of the page");
  const onLine = (line) => async (link) => {
    const boxes = await link.evaluate((element) => [...element.getClientRects()].map((box) => box.toJSON()));
    assert.ok(boxes.length > 1, "it wraps");
    const { x, y, width, height } = boxes.at(line);
    await page.mouse.click(x + width / 2, y + height / 2);
  };
  const ways = [onLine(0), onLine(-1), (link) => link.press("Enter"), (link) => link.evaluate((one) => one.click())];
  for (const where of ["h2", "p.label"])
    for (const follow of ways) {
      await page.goto(address);
      const text = page.locator(where).filter({ has: page.getByRole("link", { name: words }) }).first();
      await text.scrollIntoViewIfNeeded();
      const taps = [];
      page.on("request", (request) => taps.push(request.postDataJSON()?.tap));
      const { width } = await text.boundingBox();
      await text.click({ position: { x: where === "h2" ? 3 : width - 3, y: where === "h2" ? 6 : 60 }, force: true });
      await follow(text.getByRole("link"));
      await heading(page, "Partners");
      assert.equal(taps.filter((each) => each).length, 1, "words beside them do nothing");
      page.removeAllListeners("request");
    }
});

const waiting = (page) => page.locator('.answer[aria-disabled="true"]').count();
const woken = (page) => page.waitForFunction(() => !document.querySelector('.answer[aria-disabled="true"]'));

test("answers wake when enough was read, or when a turned window or smaller text shows it all", async (t) => {
  const address = await serve(t, configuration, "en", vendorList);
  const page = await open(t, address, { height: 600 });
  for (const share of [0.3, 0.6]) {
    await scrollTo(page, share);
    await page.waitForResponse(/event$/);
    assert.equal(await waiting(page), 2);
  }
  await resize(page, { width: 390, height: 600, textSize: 2 }); // there is more to read now
  assert.equal(await waiting(page), 2);
  await scrollTo(page, 1);
  await woken(page);
  await page.goto(address);
  await resize(page, { width: 600, height: 390 });
  assert.equal(await waiting(page), 2);
  await resize(page, { width: 1280, height: 1600 });
  await woken(page);
  await resize(page, { width: 600, height: 390, textSize: 2 });
  await page.goto(address);
  await page.locator(".answer").first().waitFor();
  assert.equal(await waiting(page), 2);
  await resize(page, { width: 600, height: 700, textSize: 0.5 });
  await woken(page);
});

// All orders of all lists of buttons with the first one among them.
function orders(first, ...others) {
  const place = (rest, item) => Array.from({ length: rest.length + 1 }, (_, at) => rest.toSpliced(at, 0, item));
  const some = others.reduce((all, item) => [...all, ...all.flatMap((rest) => place(rest, item))], [[]]);
  return some.flatMap((rest) => place(rest, first));
}

const titles = { Detail: "Details", Save: "Save my choices", RefuseAll: "Refuse all", AcceptAll: "Accept all" };

test("each list of components is a bar of these buttons, in this order and equally wide", async (t) => {
  const firsts = orders("Detail", "RefuseAll", "AcceptAll");
  const seconds = orders("Save", "RefuseAll", "AcceptAll");
  assert.equal(firsts.length, 11);
  const page = await open(t, "about:blank");
  const expectBar = async (components) => {
    const bar = await page.locator(".bar > .button").evaluateAll((all) =>
      all.map((each) => ({ title: each.textContent, ...each.getBoundingClientRect().toJSON() })));
    const seen = bar.toSorted((a, b) => a.left - b.left).map(({ title }) => title);
    assert.deepEqual(seen, components.map((each) => titles[each]));
    for (const { width, height } of bar) {
      assert.ok(Math.abs(width - bar[0].width) < 0.1);
      assert.equal(height, bar[0].height);
    }
  };
  for (const [i, firstLayerButton] of firsts.entries()) {
    const components = { firstLayerButton, secondLayerButton: seconds[i] };
    await page.goto(await serve(t, { ...configuration, components }, "en", vendorList));
    await expectBar(firstLayerButton);
    await tap(page, button(page, "Details"));
    await expectBar(seconds[i]);
    await tap(page, button(page, "Partners"));
    await expectBar(seconds[i]);
  }
});

test("a purpose's switch writes both of its keys, and its legal text is the list's", async (t) => {
  const page = await openPurposes(t);
  await tap(page, switchOf(page, `${list.purposes[3].name}: Consent`));
  await tap(page, page.getByRole("button", { name: `Legal text ${list.purposes[3].name}` }));
  assert.equal((await page.locator(".scroll p.label").allTextContents()).join("\n"), list.purposes[3].descriptionLegal);
  await page.keyboard.press("Escape");
  await heading(page, "Purposes");
  await tap(page, button(page, "Save my choices"));
  await page.reload(); // the center goes, which saves
  const written = (await recorded(new URL(page.url()).origin)).flatMap(({ sdk }) => (sdk ? [sdk] : []));
  const of = (key) => written.findLast((each) => each[1] === `PRIVACY_CAT_${key}`)?.[2];
  assert.deepEqual([of(10005), of(10006)], ["1", "1"]);
  assert.deepEqual([of(10003), of(10004)], ["0", undefined], "as its switch stood, and no more");
});

const shown = (page) => page.locator(".searchable h2").allTextContents();

test("related partners are the related, unless the configuration names its own", async (t) => {
  const lead = async (page, name) => {
    await tap(page, page.getByRole("button", { name: `Partners for this ${name}` }));
    await heading(page, "Partners");
    const names = await shown(page);
    await tap(page, button(page, "Purposes"));
    return names.sort();
  };
  const all = vendors.map(({ name }) => name).sort();
  const related = (...keys) => (id) =>
    vendors.filter((vendor) => keys.some((key) => vendor[key].includes(id))).map(({ name }) => name).sort();
  const page = await openPurposes(t);
  for (const [section, id, wanted] of [["purposes", 4, related("purposes", "legIntPurposes")],
    ["specialPurposes", 2, related("specialPurposes")], ["features", 1, related("features")],
    ["specialFeatures", 1, related("specialFeatures")]]) {
    assert.ok(wanted(id).length > 0 && wanted(id).length < all.length, section);
    assert.deepEqual(await lead(page, list[section][id].name), wanted(id), section);
  }
  await tap(page, button(page, "Partners")); // the filter is gone
  assert.deepEqual((await shown(page)).sort(), all);

  const ids = [6, 8, 72];
  const own = await openPurposes(t, { ...configuration,
    information: { ...configuration.information, vendors: ids.join(",") } });
  const name = await own.locator(".list h3").first().textContent();
  assert.deepEqual(await lead(own, name),
    ids.map((id) => list.vendors[id].name).sort(), "named by the configuration, all are shown");
});

test("a partner without a purpose opens like the others, and a policy is opened outside", async (t) => {
  const page = await openVendors(t);
  const none = vendors.find(({ purposes, legIntPurposes }) => purposes.length + legIntPurposes.length === 0);
  const row = page.locator(".searchable > .box").filter({ has: page.getByRole("heading", { name: none.name, exact: true }) });
  assert.equal(await row.getByRole("switch").count(), 0);
  for (const expanded of ["true", "false", "true"]) {
    await tap(page, button(page, `Details ${none.name}`));
    assert.equal(await button(page, `Details ${none.name}`).getAttribute("aria-expanded"), expanded);
  }
  await page.context().route(none.policyUrl, (route) => route.fulfill({ body: "policy" }));
  const opened = page.context().waitForEvent("page");
  const patch = await tap(page, row.getByRole("link"));
  assert.deepEqual(patch.open, [none.policyUrl]);
  await (await opened).waitForURL(none.policyUrl);
});
