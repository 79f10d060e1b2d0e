// The bar of the changes that wait: what is in force, what is not, and what brings the two together.
import { html, useState } from './vendor/preact-htm.js';
import { state, useStore, request, withScene, announce } from './store.js';
import * as tree from './tree.js';
import { ask, tell, send, notSent, askToApply, consequences, Consequences, Change } from './confirm.js';

const kKinds = { live: 'in force, not saved', shown: 'staged, and shown', hidden: 'staged, not shown' };

/** The changes that wait, by the commit that takes them over. */
function groups() {
  const byCommit = new Map();
  for (const item of state.pending) {
    const key = tree.family(item.commit);
    if (!byCommit.has(key)) byCommit.set(key, { commit: item.commit, items: [] });
    byCommit.get(key).items.push(item);
  }
  return [...byCommit.values()];
}

/** The value that was there before, which a discard writes back. */
const before = ({ kind, live, stored }) => (kind === 'hidden' ? live : stored);

const putBack = async (item) => ({ path: await withScene(item.path), value: before(item) });

/** The camera's own save writes the picture into the scene that was named last, so the one in force is named in front of it. */
async function whatItMeans(path) {
  return path === 'camera.status' ? [{ path: await withScene('camera.scene.name') }] : [];
}

/** Shows what a commit takes along and stops, and sends it. */
export async function commit(group) {
  if (tree.isGuarded(group.commit)) {
    const items = group.items.map(({ path, live, typed, taken, kind }) => ({ path, value: kind === 'hidden' ? taken ?? typed : live }));
    const shown = await Promise.all(group.items.filter((item) => item.kind !== 'hidden' && item.stored !== undefined).map(putBack));
    const outcome = await askToApply(items.filter(({ value }) => value !== undefined), group.commit, shown);
    if (outcome?.bad) await tell('The camera refused', html`<p class="error">${outcome.text}</p>`);
    return;
  }
  const what = consequences(group.commit);
  if (!await ask({ title: 'Commit', detail: html`<${Consequences} commit=${group.commit} ...${what} />`, yes: 'Commit' })) return;
  const at = group.commit.lastIndexOf('=');
  const [path, value] = [await withScene(group.commit.slice(0, at)), group.commit.slice(at + 1)];
  const answer = (await request([...await whatItMeans(path), { path, value }])).pop();
  if (answer.status < 300) return announce('Committed.');
  await tell('The camera refused', html`<p><code>${group.commit}</code></p><p class="error">${tree.refusal(path, answer)}</p>
    <p>What was staged may have been taken back by the camera; the bar shows what still waits.</p>`);
}

async function discard(group) {
  const able = group.items.filter((item) => before(item) !== undefined && tree.mayWrite(tree.find(item.path) || { rights: {} }));
  const unable = group.items.filter((item) => !able.includes(item));
  const detail = html`${able.length > 0 && html`<p>The old values are written back:</p>
      <ul>${able.map((item) => html`<li key=${item.path}><code>${item.path}</code> = <b>${before(item) || 'empty'}</b> <span class="faint">${item.by ? `changed by ${item.by}` : 'changed by another client'}</span></li>`)}</ul>`}
    ${unable.length > 0 && html`<p class="error">These cannot be put back from here:</p><ul>${unable.map((item) => html`<li key=${item.path}><code>${item.path}</code></li>`)}</ul>`}`;
  if (!able.length) return tell('Nothing can be put back', detail);
  if (!await ask({ title: 'Discard', detail, yes: 'Discard' })) return undefined;
  return send(await Promise.all(able.map(putBack)), 'Discarded.');
}

function Group({ group, run }) {
  const may = tree.mayCommit(group.commit);
  const stops = consequences(group.commit).stops;
  return html`<section class="group" aria-label=${group.commit}>
    <header><code>${group.commit}</code>${stops.length > 0 && html`<span class="warn">stops ${stops.join(', ')}</span>`}
      <span class="buttons">${may ? html`<button onClick=${() => run(discard, group)}>Discard …</button><button class="main" onClick=${() => run(commit, group)}>Commit …</button>`
        : html`<span class="faint">not for ${state.me?.class}s</span>`}</span></header>
    <ul>${group.items.map((item) => html`<li key=${item.path}><${Change} ...${item} /> <span class="kind">${kKinds[item.kind]}</span></li>`)}</ul></section>`;
}

export function WaitingList({ empty }) {
  useStore();
  const run = (act, group) => act(group).catch(notSent);
  const all = groups();
  if (!all.length) return empty || null;
  return html`${all.map((group) => html`<${Group} key=${tree.family(group.commit)} group=${group} run=${run} />`)}`;
}

/** The bar at the page's foot; it opens upwards. */
export function WaitingBar() {
  useStore();
  const [open, setOpen] = useState(false);
  const all = groups();
  const count = state.pending.length;
  if (!count) return null;
  const words = `${count} ${count === 1 ? 'change waits' : 'changes wait'}`;
  return html`<aside class="waiting" aria-label="Changes that wait">
    ${open && html`<div class="list" id="waiting-list"><${WaitingList} /></div>`}
    <button class="bar" aria-expanded=${open} aria-controls="waiting-list" onClick=${() => setOpen(!open)}>
      <span class="mark" aria-hidden="true"></span><b role="status">${words}</b>
      <span class="faint">${all.length === 1 ? all[0].commit : `for ${all.length} commits`}</span><span class="more">${open ? 'close' : 'look'}</span></button></aside>`;
}
