// One control for each kind of value, made from what the description says a parameter takes.
import { html, useState, useEffect } from './vendor/preact-htm.js';

/** What the description has in words only. Each line says what its `text` says. */
const kShapes = {
  'camera.scene.shutter': words('auto auto100 auto250 auto1000 flickerless 30 50 60 100 120 250 500 1000 2000 4000 10000'),
  'camera.scene.image.brightness': { ...words('autoM autoH manual'), kind: 'mixed', low: 0, high: 60, number: 'fixed' },
  'camera.scene.image.white_balance.r': { kind: 'number', prefix: 's', low: 0, high: 255 },
  'camera.scene.image.white_balance.b': { kind: 'number', prefix: 's', low: 0, high: 255 },
  'camera.motion.pan': { kind: 'number', prefix: 's', low: 0, high: 1918 },
  'camera.motion.tilt': { kind: 'number', prefix: 's', low: 0, high: 1078 },
  'camera.motion.zoom': { kind: 'number', prefix: 'x', low: 1, high: 8, step: 0.01 },
  'camera.motion.abszoom': { kind: 'number', low: 0, high: 99.99, step: 0.01 },
  'camera.iris': words('auto 0 100'),
  'camera.iris.lenstype': words('lens1 lens2'),
  'camera.focus.gpiofrom.icr_status': words('night day'),
  'camera.focus.gpiofrom.check_status': words('night day'),
  'encode.quality': { kind: 'number', suffix: 'k', low: 5, high: 320 },
  'encode.bitrate': { kind: 'number', low: 64000, high: 8000000, step: 1000, noSlider: true },
  'peripheral.output_pin.pin.duration': { kind: 'number', low: 0, high: 5000, noSlider: true },
  'application.object.prerec': { kind: 'number', low: 0, high: 60 },
  'application.object.postrec': { kind: 'number', low: 0, high: 60 },
  'application.object.source': words('encode(1) encode(2) encode(3)'),
  'audio.input.gain': { ...words('auto'), kind: 'mixed', low: 0, high: 100, number: 'fixed' },
  'network.http.port': { kind: 'number', low: 1, high: 65535 },
  'network.https.port': { kind: 'number', low: 1, high: 65535 },
};

/** Forms whose samples in the description are all there is. */
const kSamplesAreAll = ['camera.scene.image.gamma', 'camera.position.status', 'system.loglevel'];

function words(list) {
  return { kind: 'words', words: list.split(' ') };
}

/** Which control fits a parameter, with its limits. */
export function shapeOf({ path, takes, commands }) {
  if (kShapes[path]) return kShapes[path];
  if (!takes) return { kind: commands ? 'commands' : 'none' };
  if (/password/.test(path)) return { kind: 'password', longest: takes.longest };
  switch (takes.kind) {
    case 'words': return { kind: isSwitch(takes.words) ? 'switch' : 'words', words: takes.words };
    case 'list': return { kind: 'words', words: takes.numbers.map(String) };
    case 'number': return { kind: 'number', low: takes.low, high: takes.high };
    case 'decimal': return { kind: 'number', low: takes.low, high: takes.high, step: 0.1 };
    case 'form': return kSamplesAreAll.includes(path) ? { kind: 'words', words: takes.taken } : { kind: 'text' };
    default: return { kind: 'text', longest: takes.longest || takes.digits };
  }
}

const isSwitch = (list) => list.length === 2 && list.includes('on') && list.includes('off');

/** How a value stands in its control, and how the control's text goes to the camera. */
export const shown = (shape, value) =>
  shape.prefix && value?.startsWith(shape.prefix) ? value.slice(1) : shape.suffix && value?.endsWith(shape.suffix) ? value.slice(0, -1) : value;
export const sent = (shape, text) => (shape.prefix && !/^[-+]/.test(text) ? shape.prefix + text : text);

const kMostSegments = 5;
const kMostLetters = 24;  // of all segments, so that they fit a phone
const kMostSliderSteps = 400;

const same = (a, b) => a !== undefined && b !== undefined && a.toLowerCase() === b.toLowerCase();

/**
 * The control of a value. `send(text)` writes at once; what is typed is a draft, told by `setDraft(text)`, until it is sent.
 */
export function Control({ shape, value, draft, setDraft, send, disabled, name, describedBy }) {
  const common = { shape, value, draft, setDraft, send, disabled, name, describedBy };
  switch (shape.kind) {
    case 'switch': return html`<${Switch} ...${common} />`;
    case 'words': return html`<${Choice} ...${common} />`;
    case 'mixed': return html`<${Mixed} ...${common} />`;
    case 'number': return html`<${NumberEntry} ...${common} />`;
    case 'none': case 'commands': return null;
    default: return html`<${TextEntry} ...${common} />`;
  }
}

function Switch({ value, draft, send, disabled, name, describedBy }) {
  const on = same(draft ?? value, 'on');
  return html`<label class="switch"><input type="checkbox" role="switch" checked=${on} disabled=${disabled} aria-label=${name}
    aria-describedby=${describedBy} onChange=${(e) => { const next = e.target.checked; e.target.checked = on; send(next ? 'on' : 'off'); }} />
    <span class="track" aria-hidden="true"></span><span class="state">${value === undefined && draft === undefined ? '–' : on ? 'on' : 'off'}</span></label>`;
}

/** Segments where they fit, a list to choose from where they do not. */
function Choice({ shape, value, draft, send, disabled, name, describedBy }) {
  const current = draft ?? value;
  const known = shape.words.some((word) => same(word, current));
  const options = known || current === undefined || current === '' ? shape.words : [current, ...shape.words];
  if (options.length <= kMostSegments && options.join('').length <= kMostLetters) {
    return html`<div class="segments" role="radiogroup" aria-label=${name} aria-describedby=${describedBy}>
      ${options.map((word) => html`<label key=${word} class=${same(word, current) ? 'on' : ''}><input type="radio" name=${name}
        checked=${same(word, current)} disabled=${disabled} onChange=${(e) => { e.target.checked = same(word, current); send(word); }} />${word}</label>`)}</div>`;
  }
  return html`<select aria-label=${name} aria-describedby=${describedBy} disabled=${disabled}
    onChange=${(e) => { const next = e.target.value; e.target.value = current ?? ''; send(next); }}>
    ${current === undefined || current === '' ? html`<option value="" selected>–</option>` : null}
    ${options.map((word) => html`<option key=${word} value=${word} selected=${same(word, current)}>${word}</option>`)}</select>`;
}

/** Words, or a number in their place. */
function Mixed(props) {
  const { shape, value, draft, setDraft, send, name } = props;
  const current = draft ?? value;
  const isWord = shape.words.some((word) => same(word, current));
  const choose = (word) => (word === shape.number ? setDraft(isWord ? String(shape.low) : current) : send(word));
  return html`<div class="mixed">
    <${Choice} ...${props} shape=${{ words: [...shape.words, shape.number] }} value=${isWord ? current : shape.number} draft=${undefined} send=${choose} />
    ${current !== undefined && !isWord && html`<${NumberEntry} ...${props} name=${`${name}, ${shape.number}`} />`}</div>`;
}

const onKeys = (send, drop) => (e) => {
  if (e.key === 'Enter') send(e.target.value);
  if (e.key === 'Escape') {
    e.stopPropagation();
    drop();
  }
};

function NumberEntry({ shape, value, draft, setDraft, send, disabled, name, describedBy }) {
  const current = draft ?? value ?? '';
  const step = shape.step || 1;
  const slides = !shape.noSlider && (shape.high - shape.low) / step <= kMostSliderSteps;
  return html`<div class="number">
    ${slides && html`<input type="range" min=${shape.low} max=${shape.high} step=${step} value=${current === '' ? shape.low : Number(current)} disabled=${disabled}
      aria-label=${`${name}, slider`} aria-describedby=${describedBy} onInput=${(e) => setDraft(e.target.value)} onChange=${(e) => send(e.target.value)} />`}
    <input type="number" min=${shape.low} max=${shape.high} step=${step} value=${current} disabled=${disabled} aria-label=${name}
      aria-describedby=${describedBy} onInput=${(e) => setDraft(e.target.value)} onKeyDown=${onKeys(send, () => setDraft(undefined))} /></div>`;
}

function TextEntry({ shape, value, draft, setDraft, send, disabled, name, describedBy }) {
  const [isOpen, setOpen] = useState(false);
  const secret = shape.kind === 'password';
  useEffect(() => { if (draft === undefined) setOpen(false); }, [draft]);
  return html`<form class="entry" onSubmit=${(e) => e.preventDefault()}><input type=${secret && !isOpen ? 'password' : 'text'} value=${draft ?? value ?? ''} disabled=${disabled} aria-label=${name}
    aria-describedby=${describedBy} maxlength=${shape.longest} placeholder=${secret ? 'new password' : ''} autocomplete=${secret ? 'new-password' : 'off'}
    spellcheck=${false} onInput=${(e) => setDraft(e.target.value)} onKeyDown=${onKeys(send, () => setDraft(undefined))} />
    ${secret && draft && html`<button type="button" class="small" onClick=${() => setOpen(!isOpen)}>${isOpen ? 'hide' : 'show'}</button>`}</form>`;
}
