// Curves of values over the last minutes, sampled while the page is open.
import { html, useEffect, useRef } from './vendor/preact-htm.js';
import { value, text } from './store.js';

const kPeriod = 2000;     // ms between two samples
const kMostSamples = 300;

const histories = new Map();  // path -> numbers
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
  if (times.length <= kMostSamples) return;
  times.shift();
  for (const numbers of histories.values()) numbers.shift();
}

function remember(path) {
  if (!histories.has(path)) histories.set(path, times.map(() => null));
  if (!sampling) sampling = setInterval(sample, kPeriod);
}

let library = null;

/** The library comes only with the first plot. */
function load() {
  library = library || new Promise((done, failed) => {
    const sheet = document.createElement('link');
    sheet.rel = 'stylesheet';
    sheet.href = 'vendor/uplot.css';
    const script = document.createElement('script');
    script.src = 'vendor/uplot.js';
    script.onload = done;
    script.onerror = failed;
    document.head.append(sheet, script);
  });
  return library;
}

const color = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();

/** `lines`: [{path, label, color: '--name', unit}]; the first stands on the left axis, one with `right` on the right. */
export function Plot({ title, lines, height = 150, low = 0, high }) {
  const box = useRef();
  useEffect(() => {
    let plot = null;
    let ended = false;
    const data = () => [times, ...lines.map(({ path }) => histories.get(path))];
    lines.forEach(({ path }) => remember(path));
    if (!times.length) sample();
    const draw = () => {
      if (ended || !box.current) return;
      plot?.destroy();
      plot = new window.uPlot(options(title, lines, box.current.clientWidth, height, low, high), data(), box.current);
    };
    load().then(draw, () => {});
    const timer = setInterval(() => plot?.setData(data()), kPeriod);
    const widths = new ResizeObserver(() => plot?.setSize({ width: box.current.clientWidth, height }));
    widths.observe(box.current);
    addEventListener('themechange', draw);
    return () => {
      ended = true;
      clearInterval(timer);
      widths.disconnect();
      removeEventListener('themechange', draw);
      plot?.destroy();
    };
  }, [lines.map(({ path }) => path).join()]);
  return html`<figure class="plot"><figcaption>${title}${lines.map((line) =>
    html`<span class=${`key ${line.color.slice(2)}`}>${line.label}</span>`)}</figcaption><div ref=${box} aria-hidden="true"></div></figure>`;
}

function options(title, lines, width, height, low, high) {
  const axis = { stroke: color('--faint'), grid: { stroke: color('--line'), width: 1 }, ticks: { show: false }, font: '11px system-ui' };
  const scales = { x: { time: true } };
  const axes = [{ ...axis, space: 60 }];
  for (const line of lines) {
    const scale = line.right ? 'right' : 'left';
    if (scales[scale]) continue;
    const top = line.high ?? high;
    scales[scale] = { range: (u, min, max) => [low, top ?? Math.max(line.least || 1, (max || 0) * 1.15)] };
    axes.push({ ...axis, scale, side: line.right ? 1 : 3, size: 46, grid: line.right ? { show: false } : axis.grid });
  }
  const series = lines.map((line) => ({
    label: line.label, scale: line.right ? 'right' : 'left', stroke: color(line.color), width: 1.6,
    fill: line.filled ? `${color(line.color)}22` : undefined, points: { show: false }, spanGaps: true,
  }));
  return { width, height, scales, axes, series: [{}, ...series], legend: { show: false }, cursor: { show: false } };
}
