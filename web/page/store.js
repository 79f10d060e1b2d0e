// What the page knows of the camera: the values it looks at, the changes that wait, and whether the camera answers.
import { useEffect, useReducer } from './vendor/preact-htm.js';

const kRetry = 2000;         // ms between two attempts to reach the camera again
const kHeartbeat = 8000;     // ms between two looks whether it is still there
const kPatience = 5000;      // ms until an unanswered look counts as lost
const kMostInView = 400;     // what the gateway takes
const kMostInRequest = 200;

export class Failure extends Error {
  constructor(status, text) {
    super(text);
    this.status = status;
  }
}

/** One call of the gateway; a Failure with its words when it refuses, with status 0 when nobody answers. */
export async function call(path, body, signal) {
  const post = body && {
    method: 'POST',
    headers: { 'Content-Type': 'application/json', 'X-Tmx-Console': '1' },
    body: JSON.stringify(body),
  };
  let answer;
  try {
    answer = await fetch(path, { ...post, signal, cache: 'no-store' });
  } catch {
    throw new Failure(0, 'The camera does not answer.');
  }
  if (answer.status === 204) return null;
  const json = await answer.json().catch(() => ({}));
  if (!answer.ok) throw new Failure(answer.status, json.error || `The web server answers ${answer.status}.`);
  return json;
}

// ---- state and who hears of it

/** Everything but the values; `state.pending` and the others are replaced, never changed in place. */
export const state = { me: null, linked: false, answers: true, lostAt: 0, pending: [], confirm: null, notice: '' };

const values = new Map();     // path -> {status, value}
const listeners = new Map();  // topic -> functions

function tell(topic) {
  for (const listener of listeners.get(topic) || []) listener();
}

function listen(topic, listener) {
  if (!listeners.has(topic)) listeners.set(topic, new Set());
  listeners.get(topic).add(listener);
  return () => listeners.get(topic).delete(listener);
}

function set(changes) {
  Object.assign(state, changes);
  tell('state');
}

/** The state, for a component that is drawn again whenever it changes. */
export function useStore() {
  const [, redraw] = useReducer((n) => n + 1, 0);
  useEffect(() => listen('state', redraw), []);
  return state;
}

/** Says a sentence to a screen reader. */
export function announce(text) {
  set({ notice: text });
}

// ---- values

export function value(path) {
  return values.get(path);
}

function keep(changed) {
  for (const [path, answer] of Object.entries(changed)) {
    values.set(path, answer);
    tell(path);
  }
}

/** The answers of several paths, looked at as long as the component stands. */
function useValues(paths) {
  const [, redraw] = useReducer((n) => n + 1, 0);
  const names = paths.join('\n');
  useEffect(() => {
    const ends = paths.map((path) => listen(path, redraw));
    const unwatch = watch(paths);
    return () => {
      ends.forEach((end) => end());
      unwatch();
    };
  }, [names]);
  return paths.map((path) => values.get(path));
}

export function useValue(path) {
  return useValues(path ? [path] : [])[0];
}

/** The text of an answer, or nothing where there is none. */
export const text = (answer) => (answer && answer.status === 200 ? answer.value : undefined);

/** The texts of several paths, as an object by the names given. */
export function useTexts(named) {
  const names = Object.keys(named);
  const answers = useValues(names.map((name) => named[name]));
  return Object.fromEntries(names.map((name, i) => [name, text(answers[i])]));
}

// ---- what this page looks at

const watched = new Map();  // path -> how many look
let viewer = null;          // the id of the event stream
let viewTimer = 0;
let isSending = false;      // a view is on its way
let isViewOld = false;      // and this page looks at something else by now
let hasValues = false;      // since the event stream was opened

/** These take the camera a while, so they are looked at behind the first view. */
const kSlow = ['system.session', 'system.log', 'system.hardware.cpu.utilization'];

/** Looks at the paths until the function that comes back is called. */
export function watch(paths) {
  for (const path of paths) watched.set(path, (watched.get(path) || 0) + 1);
  sendViewSoon();
  return () => {
    for (const path of paths) {
      if (watched.get(path) > 1) watched.set(path, watched.get(path) - 1);
      else watched.delete(path);
    }
    sendViewSoon();
  };
}

function sendViewSoon() {
  clearTimeout(viewTimer);
  viewTimer = setTimeout(sendView, 5);
}

/** One at a time: of two that are on their way together the older one could come last. */
async function sendView() {
  if (!viewer) return;
  isViewOld = isSending;
  if (isSending) return;
  isSending = true;
  const paths = [...watched.keys()].filter((path) => hasValues || !kSlow.includes(path)).slice(0, kMostInView);
  await call('api/view', { id: viewer, paths }).catch(() => {});
  isSending = false;
  if (isViewOld) sendViewSoon();
}

// ---- requests of the person in front of the page

/** Sends items in their order; the answers, in the same order. What a write left behind is shown at once. */
export async function request(items) {
  const answers = [];
  for (let i = 0; i < items.length; i += kMostInRequest) {
    const reply = await call('api/request', { items: items.slice(i, i + kMostInRequest) });
    answers.push(...reply.answers);
  }
  keepAnswers(answers);
  return answers;
}

/**
 * A path below the scenes with the number of the one in force: without a number a save means the scene that was named last,
 * whoever named it.
 */
export async function withScene(path) {
  if (!path.startsWith('camera.scene.')) return path;
  const [{ value: inForce }] = await request([{ path: 'camera.scene.status' }]);
  return path.replace('camera.scene.', `camera.scene(${inForce}).`);
}

/** Writes that are committed at once; with `confirm` they go back unless somebody confirms them. */
export async function apply(items, commit, confirm) {
  const reply = await call('api/apply', { items, commit, ...(confirm && { confirm: true }) });
  keepAnswers(reply.answers);
  return reply.answers;
}

/** The scene in force has two names here, with its number and without; what is written by the one is shown by the other. */
function keepAnswers(answers) {
  for (const { path, status, value: text } of answers) {
    if (text === undefined) continue;
    keep({ [path.replace(/^camera\.scene\(\d\)\.(?!status)/, 'camera.scene.')]: { status: status < 300 ? 200 : status, value: text } });
  }
}

// ---- the line to the camera

let source = null;
let retryTimer = 0;

const onEvent = {
  hello: ({ id }) => {
    viewer = id;
    hasValues = false;
    set({ linked: true, lostAt: 0, answers: true, confirm: null });  // else the next event says so
    sendView();
  },
  values: (changed) => {
    keep(changed);
    if (!hasValues) sendViewSoon();
    hasValues = true;
  },
  pending: (pending) => set({ pending: pending || [] }),
  confirm: (confirm) => set({ confirm: confirm && { ...confirm, until: Date.now() + confirm.seconds * 1000 } }),
  camera: ({ answers }) => set({ answers }),
};

function open() {
  close();
  source = new EventSource('api/events');
  for (const [name, take] of Object.entries(onEvent))
    source.addEventListener(name, (event) => take(JSON.parse(event.data)));
  source.addEventListener('error', lost);
}

function close() {
  clearTimeout(retryTimer);
  if (source) source.close();
  source = null;
  viewer = null;
}

function lost() {
  close();
  if (state.linked) set({ linked: false, lostAt: Date.now() });
  else if (!state.lostAt) set({ lostAt: Date.now() });
  if (!document.hidden) retryTimer = setTimeout(open, kRetry);
}

/** A connection to an address that is gone breaks in silence, so somebody must ask. */
async function heartbeat() {
  if (!state.linked || document.hidden) return;
  const patience = new AbortController();
  const timer = setTimeout(() => patience.abort(), kPatience);
  await call('api/me', null, patience.signal).catch(lost);
  clearTimeout(timer);
}

/** Begins to listen to the camera; a page that nobody sees does not. */
export async function begin() {
  document.addEventListener('visibilitychange', () => (document.hidden ? close() : open()));
  setInterval(heartbeat, kHeartbeat);
  open();
  for (;;) {
    try {
      set({ me: await call('api/me') });
      return;
    } catch (failure) {
      if (failure.status === 403) throw failure;
      await new Promise((next) => setTimeout(next, kRetry));
    }
  }
}
