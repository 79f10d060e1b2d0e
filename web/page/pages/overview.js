// What the camera is and what it is doing.
import { html } from '../vendor/preact-htm.js';
import { useStore, useTexts, useValue, text } from '../store.js';
import * as tree from '../tree.js';
import { Card, Facts, Stacks, stateDot } from '../parts.js';
import { Plot } from '../plot.js';
import { WaitingList } from '../waiting.js';

const kChannels = [1, 2, 3];
const kPins = [1, 2];

/** "20261123234413" as a day and a time. */
const dateText = (known) => known?.replace(/^(\d{4})(\d\d)(\d\d)(\d\d)(\d\d)(\d\d)$/, '$1-$2-$3 $4:$5:$6');

/** "system alive time: 13071.69sec" as days, hours and minutes. */
function uptime(log) {
  const seconds = Number(/alive time:\s*([\d.]+)/.exec(log ?? '')?.[1]);
  if (Number.isNaN(seconds)) return undefined;
  const [days, hours, minutes] = [Math.floor(seconds / 86400), Math.floor(seconds / 3600) % 24, Math.floor(seconds / 60) % 60];
  return [days && `${days} d`, (days || hours) && `${hours} h`, `${minutes} min`].filter(Boolean).join(' ');
}

/** Each stream of a session listing as an object. */
export function streams(listing) {
  const slots = new Map();
  for (const [, way, slot, name, known] of (listing ?? '').matchAll(/system\.session\.(sending|receiving)\((\d+)\)\.([\w.]+)=([^&\r\n]*)/g)) {
    const key = way + slot;
    if (!slots.has(key)) slots.set(key, { way, slot });
    slots.get(key)[name] = known;
  }
  return [...slots.values()].filter((one) => one['to.ip'] ? one['to.ip'] !== '-' : one['from.ip'] && one['from.ip'] !== '-');
}

export const rate = (known) => (known === undefined ? '…' : `${(parseFloat(known) / 1000).toLocaleString('en', { maximumFractionDigits: 1 })} Mbit/s`);

function Identity() {
  const known = useTexts({
    model: 'system.model', id: 'camera.id', host: 'network.hostname', guid: 'system.guid', revision: 'system.software.revision',
    program: 'system.software.programid', date: 'system.date', zone: 'system.timezone', ip: 'network.interface(1).ip',
    mask: 'network.interface(1).subnetmask', mac: 'network.interface(1).mac', port: 'network.interface(1).negotiation_detail',
  });
  const log = tree.mayRead(tree.find('system.log'));
  const alive = uptime(text(useValue(log ? 'system.log' : null)));
  return html`<${Card} title="This camera"><${Facts} pairs=${[
    ['Model', known.model], ['Name', known.id], ['Firmware', known.revision && `${known.revision} · ${known.program ?? ''}`], ['Running for', alive],
    ['Clock', known.date && `${dateText(known.date)} ${known.zone ?? ''}`], ['Address', known.ip && html`<code>${known.ip}</code> <span class="faint">${known.mask}</span>`],
    ['Host name', known.host], ['Port', known.port && `${known.port} · ${known.mac ?? ''}`], ['Identifier', known.guid && html`<code>${known.guid}</code>`]]} /><//>`;
}

function Served() {
  const { total, count, most } = useTexts({ total: 'system.session.total_bitrate', count: 'system.session.sending_count', most: 'system.session.sending_max' });
  const list = streams(text(useValue('system.session')));
  return html`<${Card} title="Who is being served" wide>
    <div class="tiles"><div><span class="big">${count ?? '…'}</span> <span class="unit">of ${most ?? '…'}</span><span class="faint">streams sent</span></div>
      <div><span class="big">${rate(total)}</span><span class="faint">together</span></div></div>
    ${list.length > 0 && html`<div class="scroll"><table><thead><tr><th>to</th><th>by</th><th>codec</th><th>size</th><th class="num">frames/s</th><th class="num">rate</th></tr></thead>
      <tbody>${list.map((one) => html`<tr key=${one.way + one.slot}><td><code>${one.way === 'sending' ? `${one['to.ip']}:${one['to.port']}` : `from ${one['from.ip']}:${one['from.port']}`}</code></td>
        <td>${one['to.protocol'] ?? one['from.protocol']} <span class="faint">${one['to.session'] ?? one['from.session']}</span></td><td>${one['from.encode'] ?? one['to.decode']}</td>
        <td>${one['from.framesize'] ?? ''}</td><td class="num">${one['from.framerate'] ?? ''}</td><td class="num">${one.bitrate}</td></tr>`)}</tbody></table></div>`}<//>`;
}

/** What is sent, as curves. */
export const kServed = [{ path: 'system.session.total_bitrate', label: 'kbit/s', curve: 1, least: 1000 },
  { path: 'system.session.sending_count', label: 'streams', curve: 2, right: true, high: 22 }];

function Load() {
  const busy = tree.mayRead(tree.find('system.hardware.cpu.utilization'));
  return html`<${Card} title="The last ten minutes">
    <${Plot} lines=${kServed} />${busy && html`<${Plot} lines=${[{ path: 'system.hardware.cpu.utilization', label: 'processor, % busy', curve: 3, least: 100 }]} />`}<//>`;
}

function Now() {
  const { scene, name } = useTexts({ scene: 'camera.scene.status', name: 'camera.scene.name' });
  const values = useTexts(Object.fromEntries(kChannels.flatMap((n) => ['type', 'framesize', 'framerate'].map((leaf) => [`${leaf}${n}`, `encode(${n}).${leaf}`]))));
  return html`<${Card} title="Picture and streams">
    <p><a href="#/picture">Scene ${scene ?? '…'}</a> ${name && html`<b>${name}</b>`} <span class="faint">is in force</span></p>
    <table class="channels"><tbody>${kChannels.map((n) => html`<tr key=${n}><td><a href="#/streams">Channel ${n}</a></td>
      <td>${values[`type${n}`] === 'off' ? stateDot(false) : html`<span class="dot on">${values[`type${n}`] ?? '…'}</span>`}</td>
      <td>${values[`type${n}`] !== 'off' && values[`framesize${n}`]}</td><td class="num">${values[`type${n}`] !== 'off' && html`${values[`framerate${n}`]} <span class="unit">fps</span>`}</td></tr>`)}</tbody></table><//>`;
}

function CardAndPins() {
  const { status, size, rec, error } = useTexts({ status: 'storage.disk(1).status', size: 'storage.disk(1).size', rec: 'storage.disk(1).rec', error: 'storage.disk(1).errcode' });
  const pins = useTexts(Object.fromEntries(kPins.flatMap((n) => ['input', 'output'].map((way) => [`${way}${n}`, `peripheral.${way}_pin(1).pin(${n}).status`]))));
  return html`<${Card} title="Card and pins"><${Facts} pairs=${[
    ['Card', status], ['Free', size], ['Recording', rec && stateDot(rec === 'on', ['now', 'no'])], ['Last error', error],
    ...kPins.map((n) => [`Input ${n}`, pins[`input${n}`] && stateDot(pins[`input${n}`] === 'make', ['make', 'break'])]),
    ...kPins.map((n) => [`Output ${n}`, pins[`output${n}`] && stateDot(pins[`output${n}`] === 'make', ['make', 'break'])])]} /><//>`;
}

export default function Overview() {
  const { pending } = useStore();
  const waits = html`<${Card} title="What waits" aside=${html`<span class="count">${pending.length}</span>`}>
    <${WaitingList} empty=${html`<p class="faint">Nothing: what is in force is saved.</p>`} /><//>`;
  return html`<h1>Overview</h1><${Stacks} columns=${[[html`<${Identity} />`, html`<${Load} />`], [html`<${Now} />`, html`<${CardAndPins} />`, waits]]} /><${Served} />`;
}
