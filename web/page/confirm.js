// What is asked before something happens, and the change that goes back unless it is confirmed.
import { html, useState, useEffect, useRef } from './vendor/preact-htm.js';
import { state, useStore, call, request, apply, announce, value, text } from './store.js';
import * as tree from './tree.js';

let showDialog = () => {};

/** Asks; what comes back is whether the answer was yes. `detail` is drawn below the text. */
export function ask({ title, text: words, yes = 'Yes', no = 'Cancel', detail, danger }) {
  return new Promise((done) => showDialog({ title, words, yes, no, detail, danger, done }));
}

/** Shows something with a button to close it. */
export const tell = (title, detail) => ask({ title, detail, yes: 'Close', no: null });

export const notSent = (failure) => tell('It was not sent', html`<p class="error">${failure.message}</p>`);

/** Sends items; a dialog says which were refused. */
export async function send(items, done) {
  try {
    const refused = (await request(items)).filter(({ status }) => status >= 300);
    if (!refused.length) return announce(done);
    return tell('The camera refused', html`<ul>${refused.map((one) => html`<li key=${one.path}><code>${one.path}</code> <span class="error">${tree.refusal(one.path, one)}</span></li>`)}</ul>`);
  } catch (failure) {
    return notSent(failure);
  }
}

export function Dialogs() {
  const [current, setCurrent] = useState(null);
  const box = useRef();
  showDialog = setCurrent;
  useEffect(() => {
    if (!current) return;
    box.current.showModal();
    box.current.querySelector(current.danger ? 'button' : '.main').focus();
  }, [current]);
  if (!current) return null;
  const answer = (yes) => {
    box.current.close();
    setCurrent(null);
    current.done(yes);
  };
  return html`<dialog ref=${box} aria-labelledby="dialog-title" onCancel=${(e) => { e.preventDefault(); answer(false); }}>
    <h2 id="dialog-title">${current.title}</h2>
    ${current.words && html`<p>${current.words}</p>`}${current.detail}
    <div class="buttons">${current.no && html`<button onClick=${() => answer(false)}>${current.no}</button>`}
      <button class=${current.danger ? 'main danger' : 'main'} onClick=${() => answer(true)}>${current.yes}</button></div></dialog>`;
}

// ---- what a commit takes along and stops

/** What waits behind the commit besides what is sent with it, and what a restart of the camera would lose. */
export function consequences(commit, sentPaths = []) {
  const sent = new Set(sentPaths.map(tree.canonical));
  const along = state.pending.filter((item) => tree.takesAlong(commit, item.commit) && !sent.has(tree.canonical(item.path)));
  const path = tree.bare(commit.slice(0, commit.lastIndexOf('=')));
  const word = commit.slice(commit.lastIndexOf('=') + 1);
  const own = tree.find(path)?.commands?.find((one) => one.word === word)?.stops;
  const stops = [...new Set([own, ...along.map((item) => item.stops)].filter(Boolean))];
  const lost = stops.includes('the camera') ? state.pending.filter((item) => !along.includes(item) && !sent.has(tree.canonical(item.path))) : [];
  return { along, stops, lost };
}

export function Consequences({ commit, along, stops, lost }) {
  return html`<div class="consequences">
    <p><code>${commit}</code></p>
    ${along.length > 0 && html`<p>It takes over:</p><ul>${along.map((item) => html`<li key=${item.path}><${Change} ...${item} /></li>`)}</ul>`}
    ${stops.length > 0 ? html`<p class="warn">It stops ${stops.join(' and ')} for a moment.</p>` : html`<p>It stops nothing.</p>`}
    ${lost.length > 0 && html`<p class="error">The restart loses what is not saved:</p>
      <ul>${lost.map((item) => html`<li key=${item.path}><${Change} ...${item} /></li>`)}</ul>`}</div>`;
}

/** One change in a line: from what, to what, and by whom. */
export function Change({ path, live, stored, typed, taken, by, kind }) {
  const from = kind === 'hidden' ? live : stored;
  const to = kind === 'hidden' ? taken ?? typed : live;
  return html`<span class="change"><code>${path}</code> ${from !== undefined && html`<s>${short(from)}</s> → `}<b>${short(to)}</b>
    ${typed !== undefined && taken !== undefined && typed !== taken && html` <span class="warn">${short(typed)} was taken as ${short(taken)}</span>`}
    <span class="faint"> ${by ? `by ${by}` : 'by another client'}</span></span>`;
}

/** A value as it fits a line. */
export function short(known) {
  if (known === undefined) return '?';
  if (known === '') return 'empty';
  return known.length > 40 ? `${known.slice(0, 18)}…${known.slice(-6)}` : known;
}

// ---- changes that can cut the page off

const nowAt = (path) => text(value(path));

/**
 * Shows what a change of the network would do, and applies it so that it goes back unless it is confirmed. `first` is written
 * before: what was staged already must be there to go back to.
 */
export async function askToApply(items, commit, first = []) {
  const what = consequences(commit, items.map(({ path }) => path));
  const detail = html`<ul>${items.map(({ path, value: next }) => html`<li key=${path}><${Change} kind="hidden" path=${path} live=${nowAt(path)} typed=${next} by=${state.me.user} /></li>`)}</ul>
    <${Consequences} commit=${commit} ...${what} />
    <p>Behind it you have 90 seconds to confirm; otherwise everything goes back, also when the page has lost the camera.</p>`;
  if (!await ask({ title: 'Apply and confirm', detail, yes: 'Apply' })) return { text: 'not sent' };
  if (first.length) await request(first);
  return sendAndWatch(items, commit);
}

async function sendAndWatch(items, commit) {
  try {
    const answers = await apply(items, commit, true);
    const refused = answers.filter(({ status }) => status >= 300);
    if (refused.length) return { bad: true, text: refused.map((one) => `${one.path}: ${tree.refusal(one.path, one)}`).join(' ') };
    return { text: 'applied; confirm it' };
  } catch (failure) {
    if (failure.status) throw failure;
    return { text: 'sent; the camera is on its way to its new settings' };
  }
}

/** Where the page is to be found behind a change of address or ports; nothing when it stays where it is, or is relayed. */
function newAddress(items) {
  const next = new URL(location.href);
  if (next.hostname === 'localhost' || next.hostname.startsWith('127.')) return null;
  const to = (path) => items.find((item) => tree.canonical(item.path) === path)?.new;
  next.hostname = to('network.interface(1).ip') ?? next.hostname;
  if (to('network.http(configuration).status') === 'off') next.protocol = 'https:';
  if (to('network.https(configuration).status') === 'off') next.protocol = 'http:';
  next.port = to(`network.${next.protocol.slice(0, -1)}(configuration).port`) ?? (next.protocol === location.protocol ? next.port : '');
  return next.origin === location.origin ? null : next.href;
}

/** The change that waits to be confirmed, with the seconds that are left. */
export function Countdown() {
  const { confirm, me, linked } = useStore();
  const [, tick] = useState(0);
  const [problem, setProblem] = useState('');
  useEffect(() => {
    if (!confirm) return undefined;
    setProblem('');
    announce(`A change waits to be confirmed. It goes back in ${confirm.seconds} seconds.`);
    const timer = setInterval(() => tick((n) => n + 1), 500);
    return () => clearInterval(timer);
  }, [Boolean(confirm)]);
  if (!confirm) return null;
  const left = Math.max(0, Math.ceil((confirm.until - Date.now()) / 1000));
  const mine = me && (me.user === confirm.by || me.class === 'administrator');
  const next = newAddress(confirm.items);
  const keep = () => call('api/confirm', {}).then(() => announce('The change is kept.'), (failure) => setProblem(failure.message));
  return html`<section class="countdown" role="alertdialog" aria-label="Confirm the change">
    <h2>Does it work? It goes back in <span class="left">${left}</span> s</h2>
    <progress max="90" value=${left} aria-hidden="true"></progress>
    <ul>${confirm.items.map((item) => html`<li key=${item.path}><code>${item.path}</code> <s>${short(item.old)}</s> → <b>${short(item.new)}</b></li>`)}</ul>
    ${next && html`<p>The camera is now at <a href=${next}>${next}</a>; confirm it there.</p>`}
    ${problem && html`<p class="error">${problem}</p>`}
    ${mine ? html`<div class="buttons"><button class="main" disabled=${!linked} onClick=${keep}>Keep the change</button></div>`
      : html`<p>Only ${confirm.by} or an administrator confirms it.</p>`}</section>`;
}
