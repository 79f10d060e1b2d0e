// One parameter as a line of a form: what it is, its control, what waits, and how a write went.
import { html, createContext, useContext, useState, useMemo } from './vendor/preact-htm.js';
import { state, useStore, useValue, value as stored, text, request, withScene, announce } from './store.js';
import * as tree from './tree.js';
import { Control, shapeOf, shown, sent } from './control.js';
import { askToApply, ask, consequences, Consequences, short } from './confirm.js';

/** Inside, what is typed is gathered by `set(path, value)` instead of being sent; `get(path)` shows it, nothing as a value drops it. */
export const Gather = createContext(null);

let numbers = 0;
const useName = () => useMemo(() => `f${++numbers}`, []);

/** A path that breaks behind its dots. */
const Path = ({ path }) => path.split(/(?<=\.)/).map((part) => html`${part}<wbr />`);

/** A switch shows a state; where none can be read there are words to choose from. */
function shownAs(parameter) {
  const shape = shapeOf(parameter);
  return shape.kind === 'switch' && !tree.isLookedAt(parameter) ? { ...shape, kind: 'words' } : shape;
}

/** Writes one value and says what became of it. */
async function send(path, typed, shape) {
  const value = sent(shape, typed);
  const parameter = tree.find(path);
  if (tree.isGuarded(parameter.commit) && tree.mayCommit(parameter.commit)) return askToApply([{ path, value }], parameter.commit);
  const [answer] = await request([{ path: await withScene(path), value }]);
  if (answer.status >= 300) return { bad: true, text: tree.refusal(path, answer) };
  const taken = answer.value !== undefined && answer.value !== value && shown(shape, answer.value) !== typed;
  if (taken && !/^[-+]/.test(typed) && answer.value.toLowerCase() !== value.toLowerCase()) return { text: `${typed || '“”'} was taken as ${answer.value || '“”'}` };
  return answer.status === 202 ? null : { text: 'done', brief: true };  // what waits is told by the camera
}

/**
 * A parameter. `path` is written, `shows` (the same unless given) is looked at. `shape` narrows what the control offers;
 * `plain` leaves the sentence away where a short `label` says enough.
 */
export function Field({ path, shows = path, label, shape, plain, only }) {
  useStore();
  const parameter = tree.find(path);
  const answer = useValue(parameter && tree.isLookedAt(parameter) ? shows : null);
  const [draft, setDraftText] = useState(null);  // {text, base}: what is typed, and the value that it replaces
  const [note, setNote] = useState(null);
  const [busy, setBusy] = useState(false);
  const [open, setOpen] = useState(false);
  const name = useName();
  const gather = useContext(Gather);
  if (!parameter || (answer && answer.status === 461)) return null;

  const form = shape || shownAs(parameter);
  const value = shown(form, text(answer));
  const collect = gather && ((typed) => gather.set(path, typed === undefined ? undefined : sent(form, typed)));
  const gathered = gather ? shown(form, gather.get(path)) : undefined;
  const setDraft = (next) => setDraftText((old) => (next === undefined ? null : { text: next, base: old ? old.base : value }));

  const write = async (typed) => {
    setBusy(true);
    try {
      const outcome = await send(path, typed, form);
      setNote(outcome && { ...outcome, beside: shown(form, text(stored(shows))) });
      if (outcome?.text) announce(`${label || parameter.summary} ${outcome.text}`);
      if (!outcome?.bad) setDraftText(null);
    } catch (failure) {
      setNote({ bad: true, text: failure.message });
    }
    setBusy(false);
  };

  const writable = tree.mayWrite(parameter) && !parameter.servedBy && (only !== 'read');
  const changedElsewhere = draft && draft.base !== undefined && value !== undefined && draft.base !== value;
  const title = label || parameter.summary.replace(/[;.].*/, '');
  return html`<div class=${`field ${note?.bad ? 'bad' : ''} ${busy ? 'busy' : ''}`} data-path=${path}>
    <div class="what">
      <span class="label">${title}${parameter.unit && html` <span class="unit">${parameter.unit}</span>`}
        ${plain && html`<button class="about" aria-expanded=${open} aria-label=${`About ${title}`} onClick=${() => setOpen(!open)}>?</button>`}</span>
      ${!plain && html`<button class="path" aria-expanded=${open} title="What is known of it" onClick=${() => setOpen(!open)}><${Path} path=${path} /></button>`}
    </div>
    <div class="how">
      ${writable
        ? html`<${Control} shape=${form} value=${value} draft=${draft ? draft.text : gathered} setDraft=${collect || setDraft} send=${collect || write} disabled=${answer?.status >= 400}
            name=${title} describedBy=${`${name}n`} />
          ${draft && html`<button class="small main" onClick=${() => write(draft.text)}>Set</button>
            <button class="small" onClick=${() => { setDraftText(null); setNote(null); }}>Cancel</button>`}
          ${!gather && html`<${Commands} parameter=${parameter} path=${path} setNote=${setNote} />`}`
        : html`<${ReadOnly} parameter=${parameter} answer=${answer} value=${value} />`}
    </div>
    <div class="notes" id=${`${name}n`}>
      <${Notes} answer=${answer} path=${path} note=${note?.bad || note?.beside === value ? note : null} changed=${changedElsewhere && value} gathered=${gathered !== undefined && gathered !== value ? value : undefined} />
    </div>
    ${open && html`<${About} parameter=${parameter} path=${path} value=${value} form=${form} />`}
  </div>`;
}

function ReadOnly({ parameter, answer, value }) {
  if (!tree.mayRead(parameter)) return html`<span class="faint">not for ${state.me?.class}s</span>`;
  if (answer && answer.status !== 200) return html`<span class="faint">none now</span>`;
  return html`<output class="value">${value === undefined ? '…' : value === '' ? html`<span class="faint">empty</span>` : short(value)}</output>`;
}

function Notes({ answer, path, note, changed, gathered }) {
  const waiting = tree.waitingAt(path);
  return html`
    ${answer && answer.status !== 200 && html`<span class="faint">${tree.refusal(path, answer, true)}</span>`}
    ${changed && html`<span class="warn">meanwhile changed elsewhere to ${changed}</span>`}
    ${gathered !== undefined && html`<span class="warn">now ${gathered || 'empty'}; not sent yet</span>`}
    ${waiting && html`<span class="waits">${waitingText(waiting)}</span>`}
    ${note && html`<span class=${note.bad ? 'error' : note.brief ? 'ok' : 'warn'}>${note.text}</span>`}`;
}

/** What waits at a parameter, in a few words. */
export function waitingText({ kind, stored, typed, taken, live }) {
  const was = stored === undefined ? '' : `, saved is ${stored || 'empty'}`;
  if (kind === 'live') return `in force, not saved${was}`;
  if (kind === 'shown') return `waits for its commit${was}`;
  return `${taken ?? typed ?? 'a value'} waits, in force is ${live || 'empty'}`;
}

const kForGood = ['initialize', 'delete'];

function Commands({ parameter, path, setNote }) {
  if (!parameter.commands || /\.scene\.status$/.test(parameter.path)) return null;
  const run = async ({ word }) => {
    const what = consequences(`${path}=${word}`);
    const text = kForGood.includes(word) ? 'This cannot be taken back.' : undefined;
    const detail = html`<${Consequences} commit=${`${path}=${word}`} ...${what} />`;
    if ((text || what.stops.length || what.along.length) && !await ask({ title: 'Are you sure?', text, detail, yes: word })) return;
    try {
      const [answer] = await request([{ path, value: word }]);
      setNote(answer.status < 300 ? { text: `${word}: done`, brief: true } : { bad: true, text: tree.refusal(path, answer) });
    } catch (failure) {
      setNote({ bad: true, text: failure.message });
    }
  };
  return parameter.commands.map((command) => html`<button key=${command.word} class="small" onClick=${() => run(command)}>${command.word}</button>`);
}

const kClasses = ['administrator', 'operator', 'user'];
const kRights = { RW: 'reads and writes', 'R-': 'reads', '-W': 'writes', '--': '' };

/** All that the description says. */
function About({ parameter, path, value, form }) {
  const who = kClasses.filter((name) => kRights[parameter.rights[name]]).map((name) => `${name} ${kRights[parameter.rights[name]]}`);
  const line = tree.commandLine(path, tree.mayWrite(parameter) && value && parameter.takes ? sent(form, value) : undefined);
  return html`<dl class="known">
    <dt>What</dt><dd>${parameter.summary}</dd>
    ${parameter.takes && html`<dt>Takes</dt><dd>${parameter.takes.text}${parameter.unit && ` (${parameter.unit})`}</dd>`}
    ${parameter.commands && html`<dt>Does</dt><dd>${parameter.commands.map(({ word, stops }) => word + (stops ? ` (stops ${stops})` : '')).join(', ')}</dd>`}
    ${parameter.default !== undefined && html`<dt>Built in</dt><dd>${parameter.default || 'empty'}</dd>`}
    <dt>Who</dt><dd>${who.join(', ') || 'nobody'}</dd>
    ${parameter.when && html`<dt>When</dt><dd>${parameter.when}</dd>`}
    ${(parameter.conditions || []).map((one) => html`<dt>Possible</dt><dd>${one.text} (${one.of})</dd>`)}
    <dt>Prompt</dt><dd><${Copyable} line=${line} /></dd></dl>`;
}

function Copyable({ line }) {
  const [copied, setCopied] = useState(false);
  const copy = async () => {
    await copyText(line);
    setCopied(true);
    announce('copied');
    setTimeout(() => setCopied(false), 1500);
  };
  return html`<span class="copyable"><code>${line}</code><button class="small" onClick=${copy}>${copied ? 'copied' : 'copy'}</button></span>`;
}

/** A page in the clear has no clipboard of its own; there a selection is copied. */
async function copyText(line) {
  if (navigator.clipboard) return navigator.clipboard.writeText(line);
  const box = document.createElement('textarea');
  box.value = line;
  document.body.append(box);
  box.select();
  document.execCommand('copy');
  box.remove();
}
