// The simulated camera only: what reached the hardware, the neighbours and the child programs, told as a story.
import { html, useState, useEffect } from '../vendor/preact-htm.js';
import { call, useStore } from '../store.js';
import { Card } from '../parts.js';

const kPeriod = 2000;    // ms between two looks
const kPause = 1.5;      // s without a line that end a chapter
const kMostLines = 400;

const kWho = {
  dsp: 'picture', encoder: 'encoder', recorder: 'recorder', detection: 'detection', session: 'sessions', gpio: 'pins', ptz: 'pan, tilt', ptzseq: 'pan, tilt', serial: 'serial port',
  defect: 'sensor', sdrec: 'card', child: 'program', daemon: 'daemon', sdk: 'encoder', nvt: 'ONVIF', program: 'program',
};

const kSilent = ['t', 'who', 'what', 'raw', 'text', 'addr', 'name', 'command', 'answer', 'result', 'args'];

/** What happened, in words; the numbers that came with it behind it. */
function told(line) {
  const what = line.who === 'child' ? html`<code>${line.command}</code>` : html`<b>${line.name ?? line.what}</b>${line.name && line.what !== 'set' && ` ${line.what}`}`;
  const rest = Object.entries(line).filter(([key]) => !kSilent.includes(key)).map(([key, known]) => `${key} ${typeof known === 'object' ? JSON.stringify(known) : known}`);
  const said = [line.text, ...rest].filter((one) => one !== undefined && one !== '').join(', ');
  return html`${what} ${said}${line.answer !== undefined && html` <span class="faint">→ ${String(line.answer)}</span>`}`;
}

const failed = (line) => line.result < 0 || /^(-|error|fail)/.test(String(line.answer ?? ''));

const clock = (t) => new Date(t * 1000).toLocaleTimeString('en-GB');

/** Lines that follow each other closely were caused by one change; the latest chapter first. */
function chapters(lines) {
  const all = [];
  for (const line of lines) {
    const last = all[all.length - 1];
    if (last && line.t - last[last.length - 1].t < kPause) last.push(line);
    else all.push([line]);
  }
  return all.reverse();
}

const isQuestion = (line) => /^get|^card_state|count$|^query|status$/.test(line.what ?? '') && line.answer !== undefined;

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
      ${chapter.map((line, i) => html`<li key=${i} class=${failed(line) ? 'failed' : ''}><span class="faint">+${(line.t - chapter[0].t).toFixed(3)} s</span><span>${kWho[line.who] ?? line.who}</span><span class="told">${told(line)}</span></li>`)}</ol>`)}<//>`;
}
