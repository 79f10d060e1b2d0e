// The simulated camera only: what reached the hardware, the neighbours and the child programs, told as a story.
import { html, useState, useEffect } from '../vendor/preact-htm.js';
import { call, useStore } from '../store.js';
import { Card } from '../parts.js';

const kPeriod = 2000;    // ms between two looks
const kPause = 1;      // s without a line that end a chapter
const kMostLines = 2000;
const kMostAtOnce = 200; // of one answer; behind it there is more

const kWho = {
  dsp: 'picture', encoder: 'encoder', recorder: 'recorder', detection: 'detection', session: 'sessions', gpio: 'pins', ptz: 'pan, tilt', ptzseq: 'pan, tilt', serial: 'serial port',
  defect: 'sensor', sdrec: 'card', child: 'program', daemon: 'daemon', sdk: 'encoder', nvt: 'ONVIF', program: 'program',
};

const kSilent = ['t', 'who', 'what', 'raw', 'text', 'addr', 'id', 'name', 'command', 'kind', 'answer', 'result', 'args', 'times'];

/** What happened, in words; the numbers that came with it behind it. */
function told(line) {
  const what = line.who === 'child' && line.command ? html`<code>${line.command}</code>` : html`<b>${line.name ?? line.what}</b>${line.name && line.what !== 'set' && ` ${line.what}`}`;
  const rest = Object.entries(line).filter(([key]) => !kSilent.includes(key)).map(([key, known]) => `${key} ${typeof known === 'object' ? JSON.stringify(known) : known}`);
  const said = [line.text, ...rest].filter((one) => one !== undefined && one !== '').join(', ');
  return html`${what} ${said}${line.answer !== undefined && html` <span class="faint">→ ${String(line.answer)}</span>`}${line.times > 1 && html` <span class="count">${line.times} times</span>`}`;
}

/** What is asked of a neighbour changes nothing. */
const isQuestion = ({ who, what }) => /^(get|read|query|card_state)/.test(what) || (who === 'session' && /^(sending|receiving|total|codec)/.test(what));

const clock = (t) => new Date(t * 1000).toLocaleTimeString('en-GB');

const isAlike = (a, b) => a.who === b.who && a.what === b.what && a.name === b.name && a.channel === b.channel && !a.text && !b.text;

/** Lines that follow each other closely were caused by one change; the latest chapter first. */
function chapters(lines) {
  const all = [];
  for (const line of lines) {
    const last = all[all.length - 1];
    const before = last && last[last.length - 1];
    if (before && isAlike(before, line) && line.t - before.t < kPause) last[last.length - 1] = { ...line, times: before.times + 1 };
    else if (before && line.t - before.t < kPause) last.push({ ...line, times: 1 });
    else all.push([{ ...line, times: 1 }]);
  }
  return all.reverse();
}

export default function Journal() {
  const { me } = useStore();
  const [lines, setLines] = useState([]);
  const [questions, setQuestions] = useState(false);
  const [problem, setProblem] = useState('');
  useEffect(() => {
    let next = 0;
    let ended = false;
    const look = async () => {
      try {
        const news = await call(`api/journal?after=${next}`);
        if (ended) return;
        setProblem('');
        next = news.next;
        if (news.lines.length) setLines((old) => [...old, ...news.lines].slice(-kMostLines));
        if (news.lines.length === kMostAtOnce) await look();
      } catch (failure) {
        setProblem(failure.message);
      }
    };
    look();
    const timer = setInterval(look, kPeriod);
    return () => {
      ended = true;
      clearInterval(timer);
    };
  }, []);
  const shown = lines.filter((line) => questions || !isQuestion(line));
  return html`<h1>Journal</h1><${Card} title="What the last changes caused" aside=${html`<label class="switch"><input type="checkbox" role="switch" checked=${questions} onChange=${(e) => setQuestions(e.target.checked)} />
      <span class="track" aria-hidden="true"></span>with what was only asked</label>`}>
    ${problem && html`<p class="error">${problem}</p>`}${me && !me.simulated && html`<p class="faint">Only a simulated camera keeps a journal.</p>`}
    ${chapters(shown).map((chapter) => html`<ol key=${chapter[0].t} class="story"><li class="chapter">${clock(chapter[0].t)} · ${chapter.length} ${chapter.length === 1 ? 'event' : 'events'}</li>
      ${chapter.map((line, i) => html`<li key=${i} class=${line.result < 0 ? 'failed' : ''}><span class="faint">+${(line.t - chapter[0].t).toFixed(3)} s</span><span>${kWho[line.who] ?? line.who}</span><span class="told">${told(line)}</span></li>`)}</ol>`)}<//>`;
}
