// A sheet as wide as the picture, on which fields and frames are drawn with the pointer, the keyboard or numbers.
import { html, useState, useRef } from './vendor/preact-htm.js';
import { announce } from './store.js';

export const kWide = 1918;  // sensor positions of the picture's right and lower edge
export const kHigh = 1078;

/** The fields of a text of hexadecimal digits: row after row, the least bit of a byte first. */
export function fieldsOf(digits, count) {
  const fields = new Array(count).fill(false);
  for (let i = 0; i < count; ++i) fields[i] = Boolean((parseInt(digits.substr((i >> 3) * 2, 2), 16) >> (i & 7)) & 1);
  return fields;
}

export function digitsOf(fields, length) {
  let digits = '';
  for (let byte = 0; byte < length / 2; ++byte) {
    let bits = 0;
    for (let i = 0; i < 8; ++i) if (fields[byte * 8 + i]) bits |= 1 << i;
    digits += bits.toString(16).padStart(2, '0');
  }
  return digits;
}

const clamp = (n, low, high) => Math.min(high, Math.max(low, n));

/** Where a pointer is, in units of the sheet. */
function at(event, columns, rows) {
  const box = event.currentTarget.getBoundingClientRect();
  return [clamp(((event.clientX - box.left) / box.width) * columns, 0, columns), clamp(((event.clientY - box.top) / box.height) * rows, 0, rows)];
}

const kArrows = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

/** Something to look at behind what is drawn: the far and the near of a view. */
const Backdrop = ({ columns, rows }) => html`<rect class="horizon" x="0" y=${rows * 0.45} width=${columns} height=${rows * 0.55} />
  <path class="far" d=${`M0 ${rows * 0.45}L${columns * 0.22} ${rows * 0.3}L${columns * 0.4} ${rows * 0.45}L${columns * 0.62} ${rows * 0.24}L${columns} ${rows * 0.45}z`} />`;

function lines(columns, rows) {
  const across = Array.from({ length: columns - 1 }, (_, i) => `M${i + 1} 0V${rows}`);
  const down = Array.from({ length: rows - 1 }, (_, i) => `M0 ${i + 1}H${columns}`);
  return [...across, ...down].join('');
}

/** Fields that are on or off. `change(fields)` is told after each stroke. */
export function FieldSheet({ columns, rows, fields, change, kind, name, disabled }) {
  const [drag, setDrag] = useState(null);  // {from, to, on}
  const [cursor, setCursor] = useState([0, 0]);
  const index = ([x, y]) => y * columns + x;

  const fill = ([x1, y1], [x2, y2], on) => {
    const next = fields.slice();
    for (let y = Math.min(y1, y2); y <= Math.max(y1, y2); ++y)
      for (let x = Math.min(x1, x2); x <= Math.max(x1, x2); ++x) next[index([x, y])] = on;
    change(next);
  };
  const cell = (event) => {
    const [x, y] = at(event, columns, rows);
    return [Math.min(columns - 1, Math.floor(x)), Math.min(rows - 1, Math.floor(y))];
  };
  const down = (event) => {
    if (disabled) return;
    event.currentTarget.setPointerCapture(event.pointerId);
    const from = cell(event);
    setCursor(from);
    setDrag({ from, to: from, on: !fields[index(from)] });
  };
  const up = () => {
    if (drag) fill(drag.from, drag.to, drag.on);
    setDrag(null);
  };
  const key = (event) => {
    const step = kArrows[event.key];
    if (step) {
      const next = [clamp(cursor[0] + step[0], 0, columns - 1), clamp(cursor[1] + step[1], 0, rows - 1)];
      if (event.shiftKey && !disabled) fill(next, next, fields[index(cursor)]);
      setCursor(next);
      announce(`column ${next[0] + 1}, row ${next[1] + 1}, ${fields[index(next)] ? 'on' : 'off'}`);
    } else if ((event.key === ' ' || event.key === 'Enter') && !disabled) {
      fill(cursor, cursor, !fields[index(cursor)]);
      announce(fields[index(cursor)] ? 'off' : 'on');
    } else {
      return;
    }
    event.preventDefault();
  };
  const set = fields.map((on, i) => (on ? `M${i % columns} ${Math.floor(i / columns)}h1v1h-1z` : '')).join('');
  const box = drag && { x: Math.min(drag.from[0], drag.to[0]), y: Math.min(drag.from[1], drag.to[1]), width: Math.abs(drag.from[0] - drag.to[0]) + 1, height: Math.abs(drag.from[1] - drag.to[1]) + 1 };
  return html`<svg class="sheet" viewBox=${`0 0 ${columns} ${rows}`} preserveAspectRatio="none" tabindex="0" role="application"
      aria-label=${`${name}: ${fields.filter(Boolean).length} of ${columns * rows} fields. Arrows move, space changes a field, shift and arrows draw.`}
      onPointerDown=${down} onPointerMove=${(e) => drag && setDrag({ ...drag, to: cell(e) })} onPointerUp=${up} onPointerCancel=${() => setDrag(null)} onKeyDown=${key}>
    <${Backdrop} columns=${columns} rows=${rows} /><path class="lines" d=${lines(columns, rows)} /><path class=${kind} d=${set} />
    ${box && html`<rect class="drag" ...${box} />`}<rect class="cursor" x=${cursor[0]} y=${cursor[1]} width="1" height="1" /></svg>
    ${!disabled && html`<${FieldNumbers} columns=${columns} rows=${rows} fill=${fill} />`}`;
}

/** The same strokes by numbers. */
function FieldNumbers({ columns, rows, fill }) {
  const [box, setBox] = useState({ column: 1, row: 1, wide: 1, high: 1 });
  const entry = (name, high) => html`<label>${name}<input type="number" min="1" max=${high} value=${box[name]} onInput=${(e) => setBox({ ...box, [name]: clamp(Number(e.target.value) || 1, 1, high) })} /></label>`;
  const draw = (on) => fill([box.column - 1, box.row - 1], [Math.min(columns, box.column + box.wide - 1) - 1, Math.min(rows, box.row + box.high - 1) - 1], on);
  return html`<div class="tools">${entry('column', columns)}${entry('row', rows)}${entry('wide', columns)}${entry('high', rows)}
    <button onClick=${() => draw(true)}>Add</button><button onClick=${() => draw(false)}>Remove</button>
    <button onClick=${() => fill([0, 0], [columns - 1, rows - 1], false)}>Remove all</button></div>`;
}

/** One frame, as [x1, y1, x2, y2] in sensor positions. */
export function FrameSheet({ frame, change, name, disabled }) {
  const [from, setFrom] = useState(null);
  const ordered = ([x1, y1, x2, y2]) => [Math.min(x1, x2), Math.min(y1, y2), Math.max(x1, x2), Math.max(y1, y2)].map(Math.round);
  const point = (event) => at(event, kWide, kHigh);
  const down = (event) => {
    if (disabled) return;
    event.currentTarget.setPointerCapture(event.pointerId);
    setFrom(point(event));
  };
  const move = (event) => from && change(ordered([...from, ...point(event)]));
  const key = (event) => {
    const step = kArrows[event.key];
    if (!step || disabled) return;
    event.preventDefault();
    const by = 20;
    const [x, y] = [step[0] * by, step[1] * by];
    const [x1, y1, x2, y2] = frame;
    const next = event.shiftKey ? [x1, y1, x2 + x, y2 + y] : [x1 + x, y1 + y, x2 + x, y2 + y];
    if (next.some((n, i) => n < 0 || n > (i % 2 ? kHigh : kWide)) || next[2] <= next[0] || next[3] <= next[1]) return;
    change(next);
    announce(next.join(', '));
  };
  const [x1, y1, x2, y2] = frame;
  const entry = (label, i, high) => html`<label>${label}<input type="number" min="0" max=${high} value=${frame[i]} disabled=${disabled}
    onInput=${(e) => change(frame.map((n, j) => (i === j ? clamp(Number(e.target.value) || 0, 0, high) : n)))} /></label>`;
  return html`<svg class="sheet" viewBox=${`0 0 ${kWide} ${kHigh}`} tabindex="0" role="application" aria-label=${`${name}: ${frame.join(', ')}. Arrows move the frame, shift and arrows change its size.`}
      onPointerDown=${down} onPointerMove=${move} onPointerUp=${() => setFrom(null)} onPointerCancel=${() => setFrom(null)} onKeyDown=${key}>
    <${Backdrop} columns=${kWide} rows=${kHigh} /><rect class="frame" x=${x1} y=${y1} width=${x2 - x1} height=${y2 - y1} /></svg>
    <div class="tools">${entry('left', 0, kWide)}${entry('top', 1, kHigh)}${entry('right', 2, kWide)}${entry('bottom', 3, kHigh)}</div>`;
}

/** Where the view is: the part of the picture that is seen, and a click that moves it. */
export function ViewSheet({ pan, tilt, zoom, go, disabled }) {
  const box = useRef();
  const [wide, high] = [kWide / Math.max(1, zoom), kHigh / Math.max(1, zoom)];
  const x = clamp(pan - wide / 2, 0, kWide - wide);
  const y = clamp(tilt - high / 2, 0, kHigh - high);
  return html`<svg class="sheet" ref=${box} viewBox=${`0 0 ${kWide} ${kHigh}`} role="img" aria-label=${`The view is at ${pan}, ${tilt}, enlarged ${zoom} times`}
      onClick=${(e) => !disabled && go(at(e, kWide, kHigh).map(Math.round))}>
    <${Backdrop} columns=${kWide} rows=${kHigh} /><rect class="frame" x=${x} y=${y} width=${wide} height=${high} /><circle class="spot" cx=${pan} cy=${tilt} r="16" /></svg>`;
}
