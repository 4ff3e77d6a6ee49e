// The studio's stream of events, one for all tabs: a browser has six connections to a server and no
// more. The tab that holds the lock listens, and passes on what it hears; when it goes, another gets
// the lock.

const retry = 1000; // milliseconds

/** Calls back with every entry of the timeline and every state, and with whether they come. */
export function follow({ onEntry, onState, onConnected }) {
  const tabs = new BroadcastChannel("studio");
  let last = 0; // the entry taken last
  let newest = 0; // the last one heard of
  let states = 0; // how many came
  let catching; // the way to what was missed

  async function ask(path) {
    const response = await fetch(path);
    if (!response.ok) throw new Error(response.statusText);
    return response.json();
  }

  // A state that came meanwhile is newer than the one asked for.
  async function fetchNews() {
    const before = states;
    const [entries, state] = await Promise.all([ask(`/api/timeline?after=${last}`), ask("/api/state")]);
    entries.forEach(take);
    if (states === before) onState(state);
    onConnected(true);
  }

  function catchUp() {
    catching ??= fetchNews()
      .then(() => newest > last, () => {
        onConnected(false);
        setTimeout(catchUp, retry);
      })
      .then((isMissing) => {
        catching = undefined;
        if (isMissing) catchUp();
      });
    return catching;
  }

  function take(entry) {
    if (entry.id <= last) return;
    last = entry.id;
    onEntry(entry);
  }

  function hear({ entry, state, connected }) {
    if (entry) {
      newest = Math.max(newest, entry.id);
      if (entry.id > last + 1) catchUp();
      else take(entry);
    }
    if (state) { states += 1; onState(state); }
    if (connected !== undefined) onConnected(connected);
  }

  function tell(news) {
    hear(news);
    tabs.postMessage(news);
  }

  // Whatever ends the stream, it is opened anew: the browser does so only after some ends.
  function lead() {
    const source = new EventSource(`/api/events?after=${last}`);
    source.addEventListener("open", () => tell({ connected: true }));
    source.addEventListener("entry", (event) => tell({ entry: JSON.parse(event.data) }));
    source.addEventListener("state", (event) => tell({ state: JSON.parse(event.data) }));
    source.addEventListener("error", () => {
      tell({ connected: false });
      source.close();
      setTimeout(lead, retry);
    });
  }

  tabs.addEventListener("message", ({ data }) => hear(data));
  catchUp().then(() => navigator.locks.request("studio", () => {
    lead();
    return new Promise(() => {}); // held for as long as the tab is there
  }));
}
