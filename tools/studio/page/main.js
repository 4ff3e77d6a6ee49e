import { renderApplication } from "./application.js";
import { listen } from "./connection.js";
import { renderCode, wireCode } from "./code.js";
import { addPoint, renderCompare, wireCompare } from "./compare.js";
import { renderCopying, wireCopying } from "./copying.js";
import { renderControls, wireControls } from "./controls.js";
import { byId, setText } from "./dom.js";
import { renderEditor, wireEditor } from "./editor.js";
import { addHit, renderInspector, wireInspector } from "./inspector.js";
import { wirePanes } from "./panes.js";
import { renderPhone, wirePhone } from "./phone.js";
import { renderPlayback, wirePlayback } from "./playback.js";
import { renderRestrictions, wireRestrictions } from "./restrictions.js";
import { wireSession } from "./session.js";
import { wireTabs } from "./tabs.js";
import { renderTCString, wireTCString } from "./tcstring.js";
import { addEntry, wireTimeline } from "./timeline.js";
import { offerVendors } from "./vendorlist.js";
import { wireViews } from "./views.js";

let state;

function render() {
  setText(byId("facts"), `Site ${state.session.site}, privacy ${state.session.privacy}` +
    (state.session.iab ? ", IAB mode" : "") + (state.session.live ? ", real hosts" : `, backend ${state.network?.address}`));
  renderApplication(state);
  renderPhone(state);
  renderControls(state);
  renderCode(state);
  offerVendors(state.application?.vendorList);
  renderInspector(state);
  renderEditor(state);
  renderTCString(state);
  renderCompare(state);
  renderCopying(state);
  renderRestrictions(state);
  renderPlayback(state);
}

function take(entry) {
  addEntry(entry);
  addPoint(entry);
  if (entry.kind === "hit") addHit(entry);
}

wirePanes();
wireViews();
wireControls();
wireCode();
wirePhone();
wireTimeline();
wireCopying();
wireInspector();
wireEditor();
wireTCString();
wireRestrictions();
wireSession();
wirePlayback();
wireCompare();
wireTabs(document.querySelector('[role="tablist"]'));
listen({ onState: (news) => { state = news; render(); }, onEntry: take });
