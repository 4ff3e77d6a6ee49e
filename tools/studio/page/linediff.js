// What differs between two texts, line by line.

const kMostCompared = 4_000_000; // pairs of lines; of more, all are told as changed

// How many lines are the same, from an end on that `at` counts from.
function common(one, other, limit, at) {
  let count = 0;
  while (count < limit && at(one, count) === at(other, count)) count += 1;
  return count;
}

// The lengths of the longest common subsequences of all ends of the two.
function lengths(one, other) {
  const width = other.length + 1;
  const table = new Uint32Array((one.length + 1) * width);
  for (let i = one.length - 1; i >= 0; i -= 1)
    for (let j = other.length - 1; j >= 0; j -= 1)
      table[i * width + j] = one[i] === other[j] ? table[(i + 1) * width + j + 1] + 1
        : Math.max(table[(i + 1) * width + j], table[i * width + j + 1]);
  return (i, j) => table[i * width + j];
}

const told = (lines, sign) => lines.map((text) => ({ sign, text }));

function middle(one, other) {
  if (one.length * other.length > kMostCompared) return [...told(one, "-"), ...told(other, "+")];
  const length = lengths(one, other);
  const result = [];
  let i = 0;
  let j = 0;
  while (i < one.length && j < other.length)
    if (one[i] === other[j]) {
      result.push({ sign: " ", text: one[i] });
      i += 1;
      j += 1;
    } else if (length(i + 1, j) >= length(i, j + 1)) result.push({ sign: "-", text: one[i++] });
    else result.push({ sign: "+", text: other[j++] });
  return [...result, ...told(one.slice(i), "-"), ...told(other.slice(j), "+")];
}

/** The lines of both, {sign, text}: "-" what is only in the first, "+" only in the second, " " in both. */
export function lineDiff(before, after) {
  const [one, other] = [before.split("\n"), after.split("\n")];
  const shorter = Math.min(one.length, other.length);
  const head = common(one, other, shorter, (lines, index) => lines[index]);
  const tail = common(one, other, shorter - head, (lines, index) => lines[lines.length - 1 - index]);
  return [...told(one.slice(0, head), " "),
    ...middle(one.slice(head, one.length - tail), other.slice(head, other.length - tail)),
    ...told(one.slice(one.length - tail), " ")];
}

/** The lines that differ, with some around them; null stands where lines are left out. */
export function hunks(lines, around = 2) {
  const isNear = lines.map(() => false);
  lines.forEach(({ sign }, index) => {
    if (sign !== " ") isNear.fill(true, Math.max(0, index - around), index + around + 1);
  });
  const result = [];
  lines.forEach((line, index) => {
    if (isNear[index]) result.push(line);
    else if (result.at(-1) !== null) result.push(null);
  });
  return result;
}
