// The card, what is recorded on it, and the clips that the camera plays.
import { html, useState } from '../vendor/preact-htm.js';
import { useTexts, request } from '../store.js';
import * as tree from '../tree.js';
import { Card, Facts, Form, stateDot } from '../parts.js';
import { Field } from '../field.js';
import { ask, send } from '../confirm.js';

const kObjects = Array.from({ length: 10 }, (_, n) => n + 1);
const kClips = [1, 2, 3, 4, 5];

function Disk() {
  const { size, rec, error } = useTexts({ size: 'storage.disk(1).size', rec: 'storage.disk(1).rec', error: 'storage.disk(1).errcode' });
  const [checked, setChecked] = useState(null);
  const able = tree.mayWrite(tree.find('storage.disk.initialize'));
  const check = async () => {
    setChecked('…');
    const [answer] = await request([{ path: 'storage.disk(1).check' }]).catch((failure) => [{ status: 500, text: failure.message }]);
    setChecked(answer.status === 200 ? answer.value : tree.refusal('storage.disk.check', answer));
  };
  const format = async () => {
    if (await ask({ title: 'Format the card', text: 'Everything on the card is lost.', yes: 'Format', danger: true }))
      await send([{ path: 'storage.disk(1).initialize', value: 'start' }], 'The card is being formatted.');
  };
  return html`<${Card} title="Card"><${Facts} pairs=${[['Free', size], ['Recording', rec && stateDot(rec === 'on', ['now', 'no'])], ['Last error', error], ['Check', checked]]} />
    <${Form} paths=${['storage.disk(1).status', 'storage.disk(1).erecmode', 'storage.disk(1).mount']} />
    <div class="tools"><button onClick=${check}>Check the card</button>${able && html`<button onClick=${format}>Format …</button>`}</div><//>`;
}

export default function Recording() {
  const [n, choose] = useState(1);
  const base = `application.object(${n})`;
  return html`<h1>Recording</h1><div class="grid two"><${Disk} />
    <${Card} title="What is recorded" aside=${html`<label class="faint">recording <select onChange=${(e) => choose(Number(e.target.value))}>${kObjects.map((one) => html`<option key=${one} value=${one} selected=${one === n}>${one}</option>`)}</select></label>`}>
      <${Form} key=${n} paths=${['source', 'framesize', 'framerate', 'prerec', 'postrec', 'overwrite.status'].map((leaf) => `${base}.${leaf}`)} /><//>
    <${Card} title="Clips" wide><div class="scroll"><table class="rows"><thead><tr><th>no.</th><th>name</th><th>length, s</th><th>clip</th></tr></thead>
      <tbody>${kClips.map((one) => html`<tr key=${one}><td>${one}</td>${['name', 'time', 'status'].map((leaf) =>
        html`<td key=${leaf}><${Field} plain label=${`Clip ${one}, ${leaf}`} path=${`application.audioplay(${one}).${leaf}`} /></td>`)}</tr>`)}</tbody></table></div><//></div>`;
}
