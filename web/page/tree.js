// The description of the tree: which parameters there are, what they take, and who may use them.
import { state } from './store.js';

let parameters = [];
const byPath = new Map();

export async function load() {
  const answer = await fetch('parameters.json', { credentials: 'include' });
  parameters = (await answer.json()).parameters;
  for (const parameter of parameters) byPath.set(parameter.path, parameter);
}

export const all = () => parameters;

/** The path without its selectors, under which the description has it. */
export const bare = (path) => path.replace(/\([^)]*\)/g, '');

export const find = (path) => byPath.get(bare(path));

/** Below a layer whose read decides what later requests of others mean, the page names none but the scene in force. */
const kInForce = 'camera.scene';

const choices = (selector) => (selector.layer === kInForce ? [''] : selector.values);

function withSelector(path, layer, chosen) {
  if (chosen === '') return path;
  const bareParts = layer.split('.').length;
  const parts = path.split(/\.(?![^(]*\))/);
  parts[bareParts - 1] += `(${chosen})`;
  return parts.join('.');
}

/** The path of a parameter with what stands in each of its layers' brackets. */
export function pathOf(parameter, chosen) {
  return parameter.selectors.reduce((path, { layer }, i) => withSelector(path, layer, chosen[i]), parameter.path);
}

/** What may be chosen for each layer of the parameter that takes brackets. */
export function selectors(parameter) {
  return parameter.selectors.map((selector) => ({ layer: selector.layer, values: choices(selector) }));
}

/** Every full path of a parameter. */
export function expand(parameter) {
  let chosen = [[]];
  for (const { values } of selectors(parameter)) chosen = chosen.flatMap((done) => values.map((next) => [...done, next]));
  return chosen.map((one) => pathOf(parameter, one));
}

/** One spelling for each path: the selectors that it leaves out, and no number of a scene. */
export function canonical(path) {
  const parameter = find(path);
  if (!parameter) return path;
  const written = path.split(/\.(?![^(]*\))/);
  const chosen = parameter.selectors.map(({ layer, without, values }) => {
    if (layer === kInForce) return '';
    const inBrackets = /\((.*)\)$/.exec(written[layer.split('.').length - 1]);
    if (inBrackets) return inBrackets[1];
    return without !== undefined && values.includes(without) ? without : '';
  });
  return pathOf(parameter, chosen);
}

/** The change that waits at a parameter. */
export const waitingAt = (path) => state.pending.find((item) => canonical(item.path) === canonical(path));

const right = (parameter, at) => {
  const rights = state.me && parameter.rights[state.me.class];
  return Boolean(rights) && rights[at] !== '-';
};

/** A test that a read starts is no value to look at. */
const kReadsThatAct = ['storage.disk.check', 'camera.scp_get', 'camera.scp_set'];

export const mayRead = (parameter) => right(parameter, 0);
export const mayWrite = (parameter) => right(parameter, 1) && Boolean(parameter.takes || parameter.commands || parameter.servedBy);
export const isLookedAt = (parameter) => mayRead(parameter) && !kReadsThatAct.includes(parameter.path);

/** Taking these over can cut the page off, so they go back unless somebody confirms them. */
export const isGuarded = (commit) => /^network\.(interface|gateway|http|https)\b/.test(commit || '');

/** Whether the class may send a commit; the daemon judges again. */
export function mayCommit(commit) {
  const parameter = find(commit.slice(0, commit.lastIndexOf('=')));
  return Boolean(parameter) && mayWrite(parameter);
}

/** The same commit, however its selectors are written. */
export const family = (commit) => bare(commit);

/** A commit also writes what belongs to others: the file that a scene's save writes holds all settings of the picture. */
export function takesAlong(commit, other) {
  const picture = /^camera\.(scene|status|detection)\b.*=save$/;
  return family(commit) === family(other) || (picture.test(commit) && picture.test(other));
}

const shellWord = (word) => (/^[\w.,:=/+-]+$/.test(word) ? word : `'${word.replace(/'/g, `'\\''`)}'`);

/** The line that does the same at a prompt. */
export function commandLine(path, value) {
  return `tmxctl ${shellWord(value === undefined ? path : `${path}=${value}`)}`;
}

/** The parameters that fit all words of a search, those whose path fits best in front. */
export function search(query) {
  const words = query.toLowerCase().split(/\s+/).filter(Boolean);
  const scored = parameters.map((parameter) => {
    const path = parameter.path.toLowerCase();
    const rest = `${parameter.summary} ${parameter.unit || ''} ${parameter.takes?.text || ''}`.toLowerCase();
    let score = 0;
    for (const word of words) {
      if (path.split('.').includes(word)) score += 4;
      else if (path.includes(word)) score += 2;
      else if (rest.includes(word)) score += 1;
      else return [0, parameter];
    }
    return [score, parameter];
  });
  return scored.filter(([score]) => score > 0).sort((a, b) => b[0] - a[0]).map(([, parameter]) => parameter);
}

const kStatusText = {
  401: 'Your class may not do that',
  412: 'Not possible as the camera is now',
  451: 'Not understood',
  453: 'The encoders cannot do that together',
  456: 'There is no such number',
  457: 'Out of range',
  458: 'Nobody may write this',
  461: 'This model does not have it',
  500: 'Something behind the daemon failed',
};

/** Why a request was refused, with what would be taken. */
export function refusal(path, answer, isRead) {
  const parameter = find(path);
  const reason = kStatusText[answer.status] || answer.text || 'Refused';
  const takes = !isRead && [451, 457].includes(answer.status) && parameter?.takes ? ` It takes ${parameter.takes.text}.` : '';
  const conditions = ((![401, 457].includes(answer.status) && parameter?.conditions) || [])
    .filter(({ of }) => !isRead || of !== 'writes').map(({ text }) => ` Possible ${text}.`).join('');
  return `${reason} (${answer.status}).${takes}${conditions}`;
}
