// The three encoders beside each other, offered only what they can do together, and where their pictures go.
import { html } from '../vendor/preact-htm.js';
import { useTexts, useValue, text } from '../store.js';
import { Card, Form, stateDot } from '../parts.js';
import { Field } from '../field.js';
import { Plot } from '../plot.js';
import { streams, kServed } from './overview.js';

const kChannels = [1, 2, 3];
const kBudget = 20000;  // kbit/s of all live streams, beyond which a higher rate is refused

/** "1-15" or "80k-320k" as its ends; nothing where there is no range. */
function ends(range) {
  const found = /^(\d+)k?-(\d+)k?$/.exec(range ?? '');
  return found && Number(found[2]) > 0 ? { low: Number(found[1]), high: Number(found[2]) } : null;
}

const kCodecs = ['jpeg', 'h264high', 'h264baseline'];  // those that have ranges
const kModes = { jpeg: ['vfs', 'afs'], h264: ['vbr', 'cbr'] };

/** The frame rates that the encoder has; anything else is put to the nearest below. */
const kRates = { jpeg: ['1', '2', '3', '5', '7.5', '10', '15', '30'], h264: ['1', '2', '3', '5', '7.5', '10', '15', '25', '30'] };

const within = (list, range) => (range ? list.filter((one) => Number(one) >= range.low && Number(one) <= range.high) : list);

const outside = (known, range, factor = 1) => range && known !== undefined && (parseFloat(known) < range.low * factor || parseFloat(known) > range.high * factor);

function Channel({ n }) {
  const base = `encode(${n})`;
  const { type, size, rate, quality, bitrate, mode, interval } = useTexts({ type: `${base}.type`, size: `${base}.framesize`, rate: `${base}.framerate`, quality: `${base}.quality`,
    bitrate: `${base}.bitrate`, mode: `${base}.cbr_mode`, interval: `${base}.iframeinterval` });
  const on = kCodecs.includes(type);
  const asked = on && size ? `${base}.range(${type},${size})` : null;
  const ranges = useTexts(asked ? { rate: `${asked}.framerate`, bitrate: `${asked}.bitrate`, interval: `${asked}.iframeinterval`, ...(type === 'jpeg' && { quality: `${asked}.quality` }) } : {});
  const sizes = text(useValue(on ? `${base}.range(${type}).framesize` : null))?.split('-');
  const codec = type === 'jpeg' ? 'jpeg' : 'h264';
  const limits = { rate: ends(ranges.rate), bitrate: ends(ranges.bitrate), interval: ends(ranges.interval), quality: ends(ranges.quality) };
  const wrong = on && [
    limits.rate && outside(rate, limits.rate) && `${rate} frames/s: together with the other channels ${ranges.rate}`,
    outside(quality, limits.quality) && `${quality}: the commit puts it into ${ranges.quality}`,
    limits.interval && outside(interval, limits.interval) && `every ${interval} frames: ${ranges.interval}`,
    limits.bitrate && outside(bitrate, limits.bitrate, 1000) && `${bitrate} bit/s: ${ranges.bitrate} kbit/s`,
    mode && !kModes[codec].includes(mode.toLowerCase()) && `${mode} does not fit ${type}: ${kModes[codec].join(' or ')}`,
    sizes && !ranges.rate && `${size} has no range now: the analog output or another channel stands against it`,
  ].filter(Boolean);
  const words = (list) => ({ kind: 'words', words: list });
  return html`<${Card} title=${`Channel ${n}`} aside=${stateDot(on, [type, 'off'])}><div class="form">
    <${Field} plain label="Codec" path=${`${base}.type`} shape=${words(n === 1 ? kCodecs : [...kCodecs, 'off'])} />
    ${on && html`<${Field} plain label="Frame size" path=${`${base}.framesize`} shape=${sizes && words([...sizes].reverse())} />
      <${Field} plain label="Frame rate" path=${`${base}.framerate`} shape=${words(within(kRates[codec], limits.rate))} />
      ${codec === 'jpeg' ? html`<${Field} plain label="Size of a picture" path=${`${base}.quality`} shape=${{ kind: 'number', suffix: 'k', low: 5, high: 320, ...limits.quality }} />`
        : html`<${Field} plain label="Whole picture every" path=${`${base}.iframeinterval`} shape=${limits.interval && { kind: 'number', ...limits.interval }} />`}
      <${Field} plain label="Bit rate" path=${`${base}.bitrate`} />
      <${Field} plain label="Rate control" path=${`${base}.cbr_mode`} shape=${words(kModes[codec])} />`}</div>
    ${wrong && wrong.length > 0 && html`<p class="error">The camera will not take this as it stands:</p><ul>${wrong.map((one) => html`<li key=${one}>${one}</li>`)}</ul>`}
    ${!on && type !== undefined && html`<p class="faint">${type === 'off' ? 'Choose a codec to switch it on.' : `${type} has no ranges; only the parameter itself can be written.`}</p>`}<//>`;
}

/** What the live streams take of what they may take, by channel. */
function Budget() {
  const { total } = useTexts({ total: 'system.session.total_bitrate' });
  const list = streams(text(useValue('system.session'))).filter(({ way }) => way === 'sending');
  const sizes = useTexts(Object.fromEntries(kChannels.map((n) => [n, `encode(${n}).framesize`])));
  const used = parseFloat(total ?? '0');
  const channel = (one) => kChannels.find((n) => sizes[n] === one['from.framesize']) ?? 0;
  let x = 0;
  const parts = list.map((one) => {
    const part = { x, width: (parseFloat(one.bitrate) / kBudget) * 1000, channel: channel(one), one };
    x += part.width;
    return part;
  });
  return html`<${Card} title="Bit rate of all streams" wide aside=${html`<span><b>${Math.round(used).toLocaleString('en')}</b> <span class="unit">of ${kBudget.toLocaleString('en')} kbit/s</span></span>`}>
    <svg viewBox="0 0 1000 14" width="100%" height="14" preserveAspectRatio="none" role="img" aria-label=${`${used} of ${kBudget} kilobits a second are used`}>
      <rect class="barbed" width="1000" height="14" />${parts.length ? parts.map((part) => html`<rect class=${`bar${part.channel}`} x=${part.x} width=${Math.max(2, part.width - 2)} height="14"><title>${`${part.one['to.ip']}: ${part.one.bitrate}`}</title></rect>`)
        : html`<rect class="bar1" width=${(used / kBudget) * 1000} height="14" />`}</svg>
    <p class="faint">${kChannels.map((n) => html`<span key=${n} class=${`key curve${n}`}>channel ${n}</span> `)} Beyond ${kBudget / 1000} Mbit/s the camera refuses a higher rate (453).</p>
    <${Plot} lines=${kServed} /><//>`;
}

const kDestinations = ['Pictures of channel 1', 'Pictures of channel 2', 'Pictures of channel 3', 'Sound', 'Motion data'];

function Destination({ n, title }) {
  const base = `network.destination(${n})`;
  const status = text(useValue(`${base}.status`));
  return html`<${Card} title=${title} aside=${stateDot(status === 'on', ['sent', 'not sent'])}><div class="form">
    ${[['host', 'Group'], ['port', 'Port'], ...(n <= kChannels.length ? [['framerate', 'Frame rate']] : []), ['userdata', "Camera's data"], ['status', 'Stream']].map(([leaf, label]) =>
      html`<${Field} key=${leaf} plain label=${label} path=${`${base}.${leaf}`} />`)}</div><//>`;
}

export default function Streams() {
  return html`<h1>Streams</h1><div class="grid three">${kChannels.map((n) => html`<${Channel} key=${n} n=${n} />`)}<${Budget} /></div>
    <h3>Destinations: groups that streams go to without being asked for</h3>
    <div class="grid three">${kDestinations.map((title, i) => html`<${Destination} key=${title} n=${i + 1} title=${title} />`)}
    <${Card} title="Limits of the ranges"><${Form} paths=${['encode(1).range(jpeg).framerate_limit', 'encode(1).range(jpeg).iframeinterval_limit', 'network.http(streaming).priority']} /><//></div>`;
}
