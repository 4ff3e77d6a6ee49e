// Random configurations, the same for the same seed.

/// Numbers from 0 to below `limit`.
export function randomNumbers(seed) {
  let state = seed;
  return (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor(state / 2 ** 32 * limit);
  };
}

const words = ("a of we use this helps us Reichweitenmessung statistics to measure which articles are read " +
  "personalised advertising and content across devices you visited before").split(" ");

/// A configuration of the category center, with texts and lists of any length.
export function randomConfiguration(seed) {
  const random = randomNumbers(seed);
  const text = (most) =>
    Array.from({ length: 1 + random(most) }, () => words[random(words.length)]).join(" ");
  let id = 0;
  const policy = () => (random(2) === 0 ? {}
    : { privacy_policy_url: "https://policy.example/", privacy_policy_text: text(5) });
  const entry = () => ({ ID: String(++id), name: text(6), description: text(40), ...policy() });
  return {
    information: { version: 1, content: text(60), ...policy() },
    global_consent: { name: text(4), description: text(20) },
    categories: Array.from({ length: 1 + random(4) }, () =>
      ({ ...entry(), subcategories: Array.from({ length: random(4) }, entry) })),
  };
}
