// Curves of values over the last minutes, sampled while the page is open.
import { html, useEffect, useReducer } from './vendor/preact-htm.js';
import { value, text, watch } from './store.js';

const kPeriod = 2000;  // ms between two samples
const kMost = 300;     // samples
const kSpan = (kPeriod * kMost) / 1000;  // s
const kWide = 600;     // of the drawing, in its own units
const kHigh = 100;

const histories = new Map();  // path -> numbers, null where nothing was known
const times = [];             // s, one for each sample
let sampling = 0;

/** The number in an answer: "6800k" is 6800, "x1.50" is 1.5. */
export const numberIn = (known) => {
  const found = /-?\d+(\.\d+)?/.exec(known ?? '');
  return found ? Number(found[0]) : null;
};

function sample() {
  times.push(Date.now() / 1000);
  for (const [path, numbers] of histories) numbers.push(numberIn(text(value(path))));
  if (times.length <= kMost) return;
  times.shift();
  for (const numbers of histories.values()) numbers.shift();
}

function remember(path) {
  if (!histories.has(path)) histories.set(path, times.map(() => null));
  if (!sampling) sampling = setInterval(sample, kPeriod);
}

/** 1, 2 or 5 with noughts behind it: the least of these that is not below the number. */
function roundUp(number) {
  const unit = 10 ** Math.floor(Math.log10(number));
  return [1, 2, 5, 10].find((factor) => factor * unit >= number) * unit;
}

function curve(numbers, top, now) {
  let pen = 'M';
  return numbers.map((number, i) => {
    if (number === null) {
      pen = 'M';
      return '';
    }
    const x = kWide * (1 - (now - times[i]) / kSpan);
    const step = `${pen}${x.toFixed(1)} ${(kHigh * (1 - number / top)).toFixed(1)}`;
    pen = 'L';
    return step;
  }).join('');
}

const clock = (t) => new Date(t * 1000).toLocaleTimeString('en-GB', { hour: '2-digit', minute: '2-digit' });

/** `lines`: [{path, label, curve: 1 to 3, high or least, right}]; `high` ends its axis, `least` is the least that it shows. */
export function Plot({ lines }) {
  const [, redraw] = useReducer((n) => n + 1, 0);
  useEffect(() => {
    lines.forEach(({ path }) => remember(path));
    const unwatch = watch(lines.map(({ path }) => path));
    const timer = setInterval(redraw, kPeriod);
    return () => {
      unwatch();
      clearInterval(timer);
    };
  }, [lines.map(({ path }) => path).join()]);
  const now = Date.now() / 1000;
  const drawn = lines.map((line) => {
    const numbers = histories.get(line.path) || [];
    const top = line.high ?? roundUp(Math.max(line.least, ...numbers.map(Number)));
    return { ...line, top, last: numbers[numbers.length - 1], path: curve(numbers, top, now) };
  });
  const axis = (line) => line && html`<div class=${`axis ${line.right ? 'right' : ''}`}><span>${line.top.toLocaleString('en')}</span><span>${(line.top / 2).toLocaleString('en')}</span><span>0</span></div>`;
  return html`<figure class="plot"><figcaption>${drawn.map((line) => html`<span key=${line.label} class=${`key curve${line.curve}`}>${line.label} <b>${line.last?.toLocaleString('en', { maximumFractionDigits: 1 }) ?? '–'}</b></span>`)}</figcaption>
    <div class="drawing" aria-hidden="true">${axis(drawn.find((line) => !line.right))}
      <svg viewBox=${`0 0 ${kWide} ${kHigh}`} preserveAspectRatio="none"><path class="rules" d=${`M0 0H${kWide}M0 ${kHigh / 2}H${kWide}M0 ${kHigh}H${kWide}M${kWide / 2} 0V${kHigh}`} />
        ${drawn.map((line) => html`<path key=${line.label} class=${`curve${line.curve}`} d=${line.path} />`)}</svg>
      ${axis(drawn.find((line) => line.right))}<div class="times"><span>${clock(now - kSpan)}</span><span>${clock(now - kSpan / 2)}</span><span>${clock(now)}</span></div></div></figure>`;
}
