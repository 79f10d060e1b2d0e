// What several pages are made of.
import { html, useState, useEffect } from './vendor/preact-htm.js';
import { useStore } from './store.js';
import * as tree from './tree.js';
import { Field } from './field.js';

/** Where the page stands: the page's name, and what is behind it. */
export function useRoute() {
  const [hash, setHash] = useState(location.hash);
  useEffect(() => {
    const follow = () => setHash(location.hash);
    addEventListener('hashchange', follow);
    return () => removeEventListener('hashchange', follow);
  }, []);
  const [, page = '', rest = ''] = /^#\/([\w-]*)\/?(.*)$/.exec(hash) || [];
  return [page, decodeURIComponent(rest)];
}

export function Card({ title, children, aside, wide, id }) {
  return html`<section class=${`card ${wide ? 'wide' : ''}`} id=${id} aria-label=${title}>
    ${title && html`<header><h2>${title}</h2>${aside}</header>`}${children}</section>`;
}

/** Cards in columns, each as long as it is; on a phone one column below the other. */
export const Stacks = ({ columns, kind = 'two' }) => html`<div class=${`grid ${kind}`}>${columns.map((cards, i) => html`<div key=${i} class="stack">${cards}</div>`)}</div>`;

/** Forms, [[title, paths], …], the first half of them in the left column. */
export function Forms({ forms }) {
  const card = ([title, paths]) => html`<${Card} key=${title} title=${title}><${Form} paths=${paths} /><//>`;
  const half = Math.ceil(forms.length / 2);
  return html`<${Stacks} columns=${[forms.slice(0, half).map(card), forms.slice(half).map(card)]} />`;
}

/** Facts as pairs; those without a value are left out. */
export function Facts({ pairs }) {
  return html`<dl class="facts">${pairs.filter(([, value]) => value !== undefined && value !== null).map(([name, value]) =>
    html`<dt>${name}</dt><dd>${value === '' ? html`<span class="faint">empty</span>` : value}</dd>`)}</dl>`;
}

/** Parts of a page beside each other, one shown. */
export function Tabs({ tabs, chosen, base }) {
  return html`<nav class="tabs" aria-label="Parts of this page">${tabs.map(([id, title]) =>
    html`<a key=${id} href=${`#/${base}/${id}`} aria-current=${id === chosen ? 'page' : undefined}>${title}</a>`)}</nav>`;
}

export const stateDot = (on, words = ['on', 'off']) => html`<span class=${`dot ${on ? 'on' : ''}`}>${words[on ? 0 : 1]}</span>`;

/** One parameter with all that stands in its brackets: each its line, or lists to choose from where they are many. */
const kMostLines = 4;

export function Lines({ parameter, plain }) {
  const layers = tree.selectors(parameter);
  const [chosen, setChosen] = useState(layers.map(({ values }) => values[0]));
  const paths = tree.expand(parameter);
  if (paths.length <= kMostLines) return paths.map((path) => html`<${Field} key=${path} path=${path} plain=${plain} />`);
  const path = tree.pathOf(parameter, chosen);
  return html`<div class="chooser">
    ${layers.map(({ layer, values }, i) => values.length > 1 && html`<label key=${layer}>${layer.split('.').pop().replaceAll('_', ' ')}
      <select onChange=${(e) => setChosen(chosen.map((old, j) => (i === j ? e.target.value : old)))}>
        ${values.map((one) => html`<option key=${one} selected=${one === chosen[i]}>${one}</option>`)}</select></label>`)}
    <${Field} key=${path} path=${path} plain=${plain} /></div>`;
}

/** A form of parameters; those that the class may neither read nor write are left out. */
export function Form({ paths, names = {} }) {
  useStore();
  return html`<div class="form">${paths.filter((path) => {
    const parameter = tree.find(path);
    return parameter && (tree.mayRead(parameter) || tree.mayWrite(parameter));
  }).map((path) => html`<${Field} key=${path} path=${path} label=${names[path]} />`)}</div>`;
}

/** A section that draws what it holds only while it is open, so that a closed one is not looked at. */
export function Fold({ title, count, children, open: first = false }) {
  const [open, setOpen] = useState(first);
  return html`<details class="fold" open=${open} onToggle=${(e) => setOpen(e.target.open)}>
    <summary>${title}${count !== undefined && html` <span class="count">${count}</span>`}</summary>${open && children()}</details>`;
}
