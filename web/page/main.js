// The page's frame: its head, the way through its parts, and what is always to be seen.
import { html, render, useState, useEffect, useLayoutEffect, useRef } from './vendor/preact-htm.js';
import { begin, state, useStore, useTexts, Failure } from './store.js';
import * as tree from './tree.js';
import { useRoute } from './parts.js';
import { WaitingBar } from './waiting.js';
import { Countdown, Dialogs } from './confirm.js';

const kPages = [
  ['overview', 'Overview'], ['picture', 'Picture'], ['streams', 'Streams'], ['network', 'Network'], ['alarms', 'Alarms'],
  ['recording', 'Recording'], ['users', 'Users'], ['maintenance', 'Maintenance'], ['journal', 'Journal'],
];

const loaded = new Map();  // a page's name -> its component

function Page({ name, rest }) {
  const [, arrived] = useState(0);
  const [problem, setProblem] = useState('');
  useEffect(() => {
    setProblem('');
    if (!loaded.has(name))
      import(`./pages/${name}.js`).then((module) => { loaded.set(name, module.default); arrived((n) => n + 1); }, () => setProblem(name));
  }, [name]);
  if (problem) return html`<p class="error">This part of the page cannot be loaded now. <a href=${location.href}>Try again</a></p>`;
  const Body = loaded.get(name);
  return Body ? html`<${Body} rest=${rest} />` : html`<p class="faint">…</p>`;
}

const isSearching = () => location.hash.startsWith('#/search');

function Search() {
  const [page, rest] = useRoute();
  const box = useRef();
  useLayoutEffect(() => {  // with the first picture, since the box is then to be seen
    const focus = (e) => {
      if (e.key !== '/' || e.ctrlKey || e.metaKey || e.target.matches('select, textarea, input:not([type=checkbox], [type=radio], [type=range])')) return;
      e.preventDefault();
      box.current.focus();
      box.current.select();
    };
    addEventListener('keydown', focus);
    return () => removeEventListener('keydown', focus);
  }, []);
  const leave = (e) => {
    if (e.key !== 'Escape') return;
    box.current.blur();
    if (isSearching()) history.back();
  };
  // At once: the way is drawn again between two keys, and must not take back the second.
  const go = (e) => {
    const target = `#/search/${encodeURIComponent(e.target.value)}`;
    if (isSearching()) history.replaceState(null, '', target);
    else history.pushState(null, '', target);
    dispatchEvent(new HashChangeEvent('hashchange'));
  };
  return html`<form class="search" role="search" onSubmit=${(e) => e.preventDefault()}>
    <input ref=${box} type="search" placeholder="Search all parameters" aria-label="Search all parameters" aria-keyshortcuts="/"
      value=${page === 'search' ? rest : ''} onInput=${go} onKeyDown=${leave} autocomplete="off" spellcheck=${false} /><kbd aria-hidden="true">/</kbd></form>`;
}

const kThemes = { light: 'dark', dark: 'light' };

function ThemeSwitch() {
  const preferred = matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light';
  const [theme, setTheme] = useState(document.documentElement.dataset.theme || preferred);
  const change = () => {
    const next = kThemes[theme];
    document.documentElement.dataset.theme = next;
    localStorage.setItem('theme', next);
    setTheme(next);
  };
  return html`<button class="theme" onClick=${change} aria-label=${`Change to the ${kThemes[theme]} design`} title=${`${kThemes[theme]} design`}>
    <svg viewBox="0 0 20 20" width="18" height="18" aria-hidden="true"><circle cx="10" cy="10" r="7" fill="none" stroke="currentColor" stroke-width="1.6" /><path d="M10 3a7 7 0 0 1 0 14z" fill="currentColor" /></svg></button>`;
}

function Head() {
  const { me, linked, answers } = useStore();
  const { name, model } = useTexts({ name: 'camera.id', model: 'system.model' });
  useEffect(() => { document.title = name ? `${name} · ${model}` : 'Camera'; }, [name, model]);
  return html`<header class="head">
    <a class="name" href="#/overview"><span class=${`link ${linked && answers ? 'on' : ''}`} title=${linked && answers ? 'connected' : 'not connected'}></span>
      <b>${name || model || 'Camera'}</b>${model && model !== name && html`<span class="faint">${model}</span>`}</a>
    <${Search} /><span class="me">${me && html`<b>${me.user}</b> <span class="faint">${me.class}</span>`}</span><${ThemeSwitch} /></header>`;
}

function Nav({ page }) {
  const { me } = useStore();
  const here = useRef();
  useEffect(() => { here.current?.querySelector('[aria-current]')?.scrollIntoView({ block: 'nearest', inline: 'center' }); }, [page]);
  return html`<nav class="nav" aria-label="Parts" ref=${here}>${kPages.filter(([id]) => id !== 'journal' || me?.simulated).map(([id, title]) =>
    html`<a key=${id} href=${`#/${id}`} aria-current=${id === page ? 'page' : undefined}>${title}</a>`)}</nav>`;
}

/** Says that the camera is away, and since when. */
function Lost() {
  const { linked, answers, lostAt } = useStore();
  const [, tick] = useState(0);
  useEffect(() => {
    const timer = setInterval(() => tick((n) => n + 1), 1000);
    return () => clearInterval(timer);
  }, []);
  const since = lostAt ? Math.round((Date.now() - lostAt) / 1000) : 0;
  if (!linked && since >= 1) return html`<div class="lost" role="alert"><b>The camera cannot be reached</b><span aria-hidden="true"> for ${since} s; trying again</span>. The values below are old.</div>`;
  if (linked && !answers) return html`<div class="lost" role="alert"><b>The camera's parameter daemon does not answer.</b> The values below are old.</div>`;
  return null;
}

function App() {
  const { me, notice } = useStore();
  const [page = 'overview', rest] = useRoute();
  const name = page === 'search' || kPages.some(([id]) => id === page) ? page : 'overview';
  useEffect(() => scrollTo(0, 0), [name]);
  return html`<a class="skip" href="#main" onClick=${(e) => { e.preventDefault(); document.getElementById('main').focus(); }}>To the content</a>
    <${Head} /><${Nav} page=${name} />
    <main id="main" tabindex="-1"><${Lost} /><${Countdown} />${me && html`<${Page} key=${name} name=${name} rest=${rest} />`}</main>
    <${WaitingBar} /><${Dialogs} /><div class="aloud" aria-live="polite">${notice}</div>`;
}

async function start() {
  const box = document.getElementById('app');
  try {
    await Promise.all([begin(), tree.load()]);
    if (!state.me) throw new Failure(0, 'The camera does not answer.');
    box.textContent = '';
    render(html`<${App} />`, box);
  } catch (failure) {
    box.innerHTML = '<p class="starting" role="alert"></p>';
    box.firstChild.textContent = failure.status === 403
      ? 'This account has no class: its name must be admin, operator or user, or one of these with 1, 2 or 3 behind it.'
      : `The page could not be started: ${failure.message}`;
  }
}

start();
