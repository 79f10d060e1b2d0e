// Restart, factory state, the log, and every parameter of the tree in forms made from its description.
import { html } from '../vendor/preact-htm.js';
import { useStore, useValue, text } from '../store.js';
import * as tree from '../tree.js';
import { Card, Fold, Form, Lines, Stacks } from '../parts.js';
import { ask, send, consequences, Consequences } from '../confirm.js';

async function command(word, question) {
  const commit = `system.status=${word}`;
  if (await ask({ ...question, detail: html`<${Consequences} commit=${commit} ...${consequences(commit)} />` }))
    await send([{ path: 'system.status', value: word }], 'The camera restarts.');
}

function Camera() {
  const able = tree.mayWrite(tree.find('system.status'));
  return html`<${Card} title="Versions and restart"><${Form} paths=${['system.hardware.cpu.clock', 'system.hardware.ddr.clock', 'system.software.revision', 'system.software.programid']} />
    ${able ? html`<div class="tools"><button onClick=${() => command('restart', { title: 'Restart the camera', yes: 'Restart' })}>Restart …</button>
      <button onClick=${() => command('initialize', { title: 'Back to the factory state', text: 'All settings and accounts are lost, and this page with them until the camera has an administrator again.', yes: 'Put back', danger: true })}>Factory state …</button></div>`
      : html`<p class="faint">Only administrators restart the camera.</p>`}<//>`;
}

function Log() {
  const readable = tree.mayRead(tree.find('system.log'));
  const log = text(useValue(readable ? 'system.log' : null));
  if (!readable) return null;
  return html`<${Card} title="Log" wide><${Form} paths=${['system.loglevel']} /><pre tabindex="0" aria-label="Log">${log ?? '…'}</pre><//>`;
}

/** The parameters of a root below each of its branches; those that are alone in theirs stand together in front. */
function branches(root, parameters) {
  const found = new Map();
  for (const parameter of parameters.filter(({ path }) => path.startsWith(`${root}.`))) {
    const name = parameter.path.split('.').slice(0, 2).join('.');
    found.set(name, [...(found.get(name) || []), parameter]);
  }
  const alone = [...found.values()].filter((list) => list.length === 1).flat();
  const rest = [...found].filter(([, list]) => list.length > 1);
  return alone.length ? [[`${root}: single ones`, alone], ...rest] : rest;
}

export default function Maintenance() {
  useStore();
  const visible = tree.all().filter((parameter) => tree.mayRead(parameter) || tree.mayWrite(parameter));
  const roots = [...new Set(visible.map(({ path }) => path.split('.')[0]))];
  return html`<h1>Maintenance</h1><${Stacks} columns=${[[html`<${Camera} />`], [html`<${Card} title="Every parameter"><p>All ${tree.all().length} parameters stand below, as the camera's tree has them. <kbd>/</kbd> searches
      them. A parameter's path opens what is known of it, with the line that does the same at a prompt.</p><//>`]]} /><${Log} />
    <${Stacks} columns=${[roots.slice(0, 3), roots.slice(3)].map((column) => column.map((root) => html`<${Card} key=${root} title=${root}>${branches(root, visible).map(([name, list]) =>
      html`<${Fold} key=${name} title=${name} count=${list.length}>${() => html`<div class="form">${list.map((parameter) => html`<${Lines} key=${parameter.path} parameter=${parameter} />`)}</div>`}<//>`)}<//>`))} />`;
}
