// What is noticed, and what is done about it.
import { html, useState } from '../vendor/preact-htm.js';
import { useTexts } from '../store.js';
import { Card, Form, Forms, Tabs, stateDot } from '../parts.js';
import { Field } from '../field.js';

const kTabs = [['rules', 'Rules'], ['detection', 'Detection'], ['pins', 'Pins and serial port'], ['mail', 'Mail and files']];
const kRules = Array.from({ length: 10 }, (_, n) => n + 1);
const kDays = ['monday', 'tuesday', 'wednesday', 'thursday', 'friday', 'saturday', 'sunday'];

const kForms = {
  detection: [
    ['Motion', ['camera.detection(motion).status', 'camera.detection(motion).level']],
    ['Tampering', ['camera.detection(tampering).status', 'camera.detection(tampering).level', 'camera.detection(tampering).temporal']],
    ['Loud sound', ['audio.input.detection(1).status', 'audio.input.detection(1).level', 'audio.input.detection(1).temporal']],
    ['Absent sound', ['audio.input.detection(2).status', 'audio.input.detection(2).level', 'audio.input.detection(2).temporal']],
  ],
  pins: [
    ['Inputs', ['peripheral.input_pin(1).status', 'peripheral.input_pin(1).type', 'peripheral.input_pin(1).pin(1).status', 'peripheral.input_pin(1).pin(2).status', 'peripheral.input_pin(1).pin(1).chatter', 'peripheral.input_pin(1).pin(2).chatter']],
    ['Outputs', ['peripheral.output_pin(1).status', 'peripheral.output_pin(1).type', 'peripheral.output_pin(1).pin(1).status', 'peripheral.output_pin(1).pin(2).status', 'peripheral.output_pin(1).pin(1).duration', 'peripheral.output_pin(1).pin(2).duration']],
    ['Serial port', ['baud', 'bit', 'parity', 'stopbit', 'comment', 'rts_offset'].map((leaf) => `peripheral.serial(1).${leaf}`)],
  ],
  mail: [
    ['Mail', ['type', 'host', 'port', 'mailfrom'].map((leaf) => `application.smtp.${leaf}`)],
    ['Login before mail', ['type', 'host', 'port', 'user', 'password'].map((leaf) => `application.pop.${leaf}`)],
    ['File server', ['host', 'port', 'user', 'password', 'mode', 'path', 'naming', 'naming_option'].map((leaf) => `application.ftp.${leaf}`)],
  ],
};

function Rules() {
  const [n, choose] = useState(1);
  const states = useTexts(Object.fromEntries(kRules.map((one) => [one, `application.event(${one}).status`])));
  const base = `application.event(${n})`;
  return html`<div class="grid two"><${Card} title="Rules" wide><div class="scenes" role="group" aria-label="Rules">${kRules.map((one) =>
      html`<button key=${one} aria-pressed=${one === n} onClick=${() => choose(one)}>Rule ${one} ${stateDot(states[one] === 'on')}</button>`)}</div><//>
    <${Card} title=${`Rule ${n}`}><${Form} key=${n} paths=${[`${base}.status`, `${base}.trigger`, `${base}.action`]} /><//>
    <${Card} title=${`When rule ${n} holds`}><div class="scroll"><table class="rows"><thead><tr><th>day</th><th>used</th><th>span</th><th>the rule holds</th></tr></thead>
      <tbody>${kDays.map((day) => html`<tr key=${day + n}><td>${day}</td>${['status', 'time', 'type'].map((leaf) =>
        html`<td key=${leaf}><${Field} plain label=${`${day} ${leaf}`} path=${`${base}.filter(${day}).${leaf}`} /></td>`)}</tr>`)}</tbody></table></div>
      <p class="faint">"mask": the rule holds outside the span; "unmask": in it.</p><//></div>`;
}

export default function Alarms({ rest }) {
  const chosen = kTabs.some(([id]) => id === rest) ? rest : 'rules';
  return html`<h1>Alarms</h1><${Tabs} tabs=${kTabs} chosen=${chosen} base="alarms" />
    ${chosen === 'rules' ? html`<${Rules} />` : html`<${Forms} forms=${kForms[chosen]} />`}
    ${chosen === 'detection' && html`<p><a href="#/picture/areas">Draw the areas in which motion counts</a></p>`}`;
}
