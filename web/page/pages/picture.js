// The picture: its scene, the areas in it, and where it looks.
import { html, useState, useEffect } from '../vendor/preact-htm.js';
import { useStore, useTexts, useValue, text, request } from '../store.js';
import * as tree from '../tree.js';
import { Card, Tabs, Forms, Fold, Stacks, stateDot } from '../parts.js';
import { Field, waitingText } from '../field.js';
import { ask, send, notSent } from '../confirm.js';
import { commit } from '../waiting.js';
import { FieldSheet, FrameSheet, ViewSheet, fieldsOf, digitsOf, kWide, kHigh } from '../sheet.js';
import { Plot, numberIn } from '../plot.js';

const kTabs = [['scene', 'Scene'], ['areas', 'Areas'], ['position', 'Pan, tilt, zoom'], ['more', 'Camera']];

export default function Picture({ rest }) {
  const chosen = kTabs.some(([id]) => id === rest) ? rest : 'scene';
  return html`<h1>Picture</h1><${Tabs} tabs=${kTabs} chosen=${chosen} base="picture" />
    ${chosen === 'scene' && html`<${Scene} />`}${chosen === 'areas' && html`<${Areas} />`}
    ${chosen === 'position' && html`<${Position} />`}${chosen === 'more' && html`<${Forms} forms=${kMore} />`}`;
}

const may = (path) => tree.mayWrite(tree.find(path));

// ---- scenes

const kScenes = [0, 1, 2, 3, 4, 5, 6, 7];

const kItems = [
  ['Exposure', [['shutter', 'Shutter'], ['auto_exposure.reference', 'Aim'], ['auto_exposure.reference_ext', 'Aim, fine'], ['auto_exposure.priority', 'Priority'],
    ['image.brightness', 'Gain'], ['image.senseup_limit', 'Slow shutter, at most'], ['auto_exposure.av_pk.color', 'Average against peak, by day'], ['auto_exposure.av_pk.black_white', 'Average against peak, by night']]],
  ['Light and detail', [['image.gamma', 'Gamma'], ['image.pedestal', 'Black level'], ['image.enhance', 'Sharpness'], ['image.3ddnr', 'Noise reduction'],
    ['image.lumx', 'Lift dark parts'], ['image.blc', 'Back light']]],
  ['Day and night', [['image.true_daynight', 'Cut filter'], ['image.true_daynight.af', 'Focus follows the filter'], ['image.easy_daynight', 'Day and night']]],
  ['Colour', [['image.color', 'Saturation'], ['image.white_balance', 'White balance'], ['image.white_balance.r', 'Red'], ['image.white_balance.b', 'Blue']]],
];

const kNames = {};  // scene -> name; nobody can change one

/**
 * The names of all scenes. To name a scene decides which one a later "save" of somebody else means, so this is asked once, and the
 * same request ends with the scene in force.
 */
function useSceneNames(inForce) {
  const [names, setNames] = useState(kNames);
  useEffect(() => {
    if (inForce === undefined || Object.keys(kNames).length) return;
    request([...kScenes, inForce].map((n) => ({ path: `camera.scene(${n}).name` }))).then((answers) => {
      kScenes.forEach((n) => { if (answers[n].status === 200) kNames[n] = answers[n].value; });
      setNames({ ...kNames });
    }, () => {});
  }, [inForce]);
  return names;
}

function Scene() {
  const { pending } = useStore();
  const inForce = text(useValue('camera.scene.status'));
  const names = useSceneNames(inForce);
  const unsaved = pending.filter(({ path }) => /^camera\.scene\b/.test(path));
  const canGo = may('camera.scene.status');
  const go = async (n) => {
    if (String(n) === inForce) return;
    if (unsaved.length && !await ask({ title: `Go to scene ${n}`, yes: 'Go', no: 'Stay',
      text: 'What is not saved of the scene in force is lost:', detail: html`<ul>${unsaved.map((item) => html`<li key=${item.path}><code>${item.path}</code> ${waitingText(item)}</li>`)}</ul>` })) return;
    await send([{ path: `camera.scene(${n}).status`, value: 'goto' }], `Scene ${n} is in force.`);
  };
  const reset = async () => {
    if (await ask({ title: `Scene ${inForce} back to its factory state`, text: 'All its settings are overwritten, on flash too. This cannot be taken back.', yes: 'Put back', danger: true }))
      await send([{ path: `camera.scene(${inForce}).status`, value: 'initialize' }], 'The scene is as the factory made it.');
  };
  const card = ([title, items]) => html`<${Card} key=${title} title=${title}><div class="form">${items.map(([leaf, label]) =>
    html`<${Field} key=${leaf + inForce} plain label=${label} path=${`camera.scene(${inForce}).${leaf}`} shows=${`camera.scene.${leaf}`} />`)}</div><//>`;
  return html`<${Card} title="Scenes" aside=${canGo && inForce && html`<span class="buttons"><button onClick=${reset}>Factory state …</button>
        <button class=${unsaved.length ? 'main' : ''} onClick=${() => commit({ commit: `camera.scene(${inForce}).status=save` }).catch(notSent)}>Save scene ${inForce}</button></span>`}>
      <div class="scenes" role="group" aria-label="Scenes">${kScenes.map((n) => html`<button key=${n} aria-pressed=${String(n) === inForce} disabled=${!canGo} onClick=${() => go(n)}><span class="faint">${n}</span>${names[n] ?? ''}</button>`)}</div>
      <p class="faint">${inForce !== undefined && (unsaved.length ? html`<span class="waits">Scene ${inForce} differs from what is saved in ${unsaved.length} ${unsaved.length === 1 ? 'setting' : 'settings'}</span>` : `Scene ${inForce} is in force as it is saved.`)}
        ${' '}A change is in the picture at once; saving keeps it, and the choice of the scene too.</p><//>
    ${inForce !== undefined && html`<${Stacks} columns=${[[0, 2], [1, 3]].map((column) => column.map((i) => card(kItems[i])))} />`}`;
}

// ---- areas

const kAreas = [
  { id: 'mask', title: 'Privacy masks', path: 'camera.private_mask.area', columns: 60, rows: 34, digits: 510, kind: 'mask', form: ['camera.private_mask.status', 'camera.private_mask.color'] },
  { id: 'motion', title: 'Motion', path: 'camera.detection(motion).area', columns: 15, rows: 9, digits: 34, kind: 'motion', form: ['camera.detection(motion).status', 'camera.detection(motion).level'] },
  { id: 'light', title: 'Back light', path: 'camera.scene.image.blc.area', columns: 15, rows: 9, digits: 34, kind: 'light', form: ['camera.scene.image.blc'] },
  { id: 'white', title: 'White balance', path: 'camera.image.white_balance.area', form: [] },
  { id: 'exposure', title: 'Exposure', path: 'camera.dspadjust.ae.area', form: [] },
];

/** Names the scene in force, so that a write fails rather than reaches another scene. */
const writePath = (path, inForce) => path.replace(/^camera\.scene\./, `camera.scene(${inForce}).`);

function Areas() {
  const [id, choose] = useState('mask');
  const inForce = text(useValue('camera.scene.status'));
  const area = kAreas.find((one) => one.id === id);
  return html`<${Card} title="Areas of the picture" aside=${html`<div class="segments" role="radiogroup" aria-label="Which area">${kAreas.map((one) =>
      html`<label key=${one.id} class=${one.id === id ? 'on' : ''}><input type="radio" name="area" checked=${one.id === id} onChange=${() => choose(one.id)} />${one.title}</label>`)}</div>`}>
    <div class="sides"><div class="grow"><${AreaEditor} key=${id} area=${area} inForce=${inForce} /></div>
      <div class="grow"><div class="form">${area.form.map((path) => html`<${Field} key=${path} path=${writePath(path, inForce)} shows=${path} />`)}
        <${Field} path=${writePath(area.path, inForce)} shows=${area.path} only="read" /></div></div></div><//>`;
}

/** A frame is shown in sensor positions, and taken with an "s" in front of each. */
const frameOf = (known) => (known.match(/\d+/g) || []).map(Number);
const frameText = (frame) => frame.map((n) => `s${n}`).join('-');

function AreaEditor({ area, inForce }) {
  useStore();
  const live = text(useValue(area.path));
  const [draft, setDraft] = useState(null);  // {value, base}
  const disabled = !may(area.path);
  const change = (next) => setDraft((old) => ({ value: next, base: old ? old.base : live }));
  const write = async () => {
    const value = area.columns ? digitsOf(draft.value, area.digits) : frameText(draft.value);
    await send([{ path: writePath(area.path, inForce), value }], 'The area is in force.');
    setDraft(null);
  };
  if (live === undefined) return html`<p class="faint">…</p>`;
  const frame = frameOf(live);
  const waiting = tree.waitingAt(area.path);
  return html`${area.columns
      ? html`<${FieldSheet} ...${area} name=${area.title} fields=${draft ? draft.value : fieldsOf(live, area.columns * area.rows)} change=${change} disabled=${disabled} />`
      : html`<${FrameSheet} name=${area.title} frame=${draft ? draft.value : frame.length === 4 ? frame : [0, 0, kWide, kHigh]} change=${change} disabled=${disabled} />`}
    <p class="buttons">${draft && html`<button class="main" onClick=${write}>Set the area</button><button onClick=${() => setDraft(null)}>Cancel</button>`}
      ${draft && draft.base !== live && html`<span class="warn">meanwhile changed elsewhere; setting it overwrites that</span>`}
      ${waiting && !draft && html`<span class="waits">in force, not saved</span>`}</p>`;
}

// ---- where it looks

function Position() {
  const known = useTexts({ pan: 'camera.motion.pan', tilt: 'camera.motion.tilt', zoom: 'camera.motion.zoom', patrol: 'camera.motion.auto_patrol(0).status' });
  const [step, setStep] = useState(100);
  const [pan, tilt, zoom] = [known.pan, known.tilt, known.zoom].map((one) => numberIn(one) ?? 0);
  const able = may('camera.motion.pan');
  const look = ([x, y]) => send([{ path: 'camera.motion.pan', value: `s${x}` }, { path: 'camera.motion.tilt', value: `s${y}` }], `At ${x}, ${y}.`);
  const by = (dx, dy) => {
    const items = [];
    if (dx) items.push({ path: 'camera.motion.pan', value: `s${Math.min(kWide, Math.max(0, pan + dx * step))}` });
    if (dy) items.push({ path: 'camera.motion.tilt', value: `s${Math.min(kHigh, Math.max(0, tilt + dy * step))}` });
    return send(items, 'Moved.');
  };
  const button = (sign, label, dx, dy) => html`<button aria-label=${label} disabled=${!able} onClick=${() => by(dx, dy)}>${sign}</button>`;
  return html`<${Stacks} columns=${[[html`<${Card} title="View" aside=${html`<span class="faint">pan ${pan} · tilt ${tilt} · ×${zoom}</span>`}>
      <${ViewSheet} pan=${pan} tilt=${tilt} zoom=${zoom} go=${look} disabled=${!able} />
      <div class="sides"><div><h3>Move</h3><div class="pad" role="group" aria-label="Move">
          ${button('↖', 'left and up', -1, -1)}${button('↑', 'up', 0, -1)}${button('↗', 'right and up', 1, -1)}
          ${button('←', 'left', -1, 0)}<button aria-label="home" disabled=${!able} onClick=${() => send([{ path: 'camera.position(0).status', value: 'goto' }], 'At home.')}>⌂</button>${button('→', 'right', 1, 0)}
          ${button('↙', 'left and down', -1, 1)}${button('↓', 'down', 0, 1)}${button('↘', 'right and down', 1, 1)}</div>
          <p><label class="faint">by <select onChange=${(e) => setStep(Number(e.target.value))}>${[20, 100, 400].map((n) => html`<option key=${n} value=${n} selected=${n === step}>${n}</option>`)}</select></label></p></div>
        <div class="grow form"><h3>Values</h3>${[['pan', 'Pan'], ['tilt', 'Tilt'], ['zoom', 'Zoom']].map(([leaf, label]) => html`<${Field} key=${leaf} plain label=${label} path=${`camera.motion.${leaf}`} />`)}
          <${Field} plain label="Speed to a preset" path="camera.motion.position.speed" /></div></div><//>`, html`<${Card} title="Presets"><${Presets} /><//>`],
    [html`<${Card} title="The last ten minutes"><${Plot} lines=${[{ path: 'camera.motion.pan', label: 'pan', curve: 1, high: kWide }, { path: 'camera.motion.tilt', label: 'tilt', curve: 2, high: kWide }, { path: 'camera.motion.zoom', label: 'zoom', curve: 3, right: true, high: 8 }]} />
      <h3>Going back by itself</h3><div class="form"><${Field} plain label="Goes back" path="camera.motion.auto_return.status" /><${Field} plain label="to" path="camera.motion.auto_return.mode" /><${Field} plain label="after" path="camera.motion.auto_return.timeout" /></div><//>`,
    html`<${Card} title="Patrol" aside=${stateDot(known.patrol === 'start', ['on its way', 'rests'])}>
      <div class="form"><${Field} plain label="Patrol" path="camera.motion.auto_patrol(0).status" /></div><${PatrolSteps} /><//>`]]} />`;
}

const kPresets = Array.from({ length: 20 }, (_, n) => n);

function Presets() {
  const [all, setAll] = useState(false);
  const states = useTexts(Object.fromEntries(kPresets.map((n) => [n, `camera.position(${n}).status`])));
  const kept = kPresets.filter((n) => all || states[n] === 'registered');
  const free = kPresets.find((n) => states[n] === 'unregistered');
  const able = may('camera.position.status');
  return html`<div class="scroll"><table class="rows"><thead><tr><th>no.</th><th>name</th><th>place</th><th><span class="aloud">does</span></th></tr></thead>
      <tbody>${kept.map((n) => html`<${Preset} key=${n} n=${n} registered=${states[n] === 'registered'} able=${able} />`)}</tbody></table></div>
    <div class="tools">${able && free !== undefined && html`<button onClick=${() => send([{ path: `camera.position(${free}).status`, value: 'save' }], 'Kept.')}>Keep the present view as ${free}</button>`}
      <button onClick=${() => setAll(!all)}>${all ? 'Only those that are kept' : 'Show all 20'}</button></div>`;
}

function Preset({ n, registered, able }) {
  const { pan, tilt, zoom } = useTexts(registered ? { pan: `camera.position(${n}).pan`, tilt: `camera.position(${n}).tilt`, zoom: `camera.position(${n}).zoom` } : {});
  const path = `camera.position(${n}).status`;
  const forget = async () => {
    if (await ask({ title: `Forget preset ${n}`, text: 'Its place and its name are lost.', yes: 'Forget' })) await send([{ path, value: 'initialize' }], 'Forgotten.');
  };
  return html`<tr><td>${n}</td><td><${Field} plain label=${`Name of preset ${n}`} path=${`camera.position(${n}).comment`} /></td><td>${registered ? html`<code>${pan} ${tilt} ${zoom}</code>` : html`<span class="faint">free</span>`}</td>
    <td><span class="buttons">${registered && html`<button class="small main" disabled=${!able} onClick=${() => send([{ path, value: 'goto' }], `At preset ${n}.`)}>Go</button>`}
      <button class="small" disabled=${!able} onClick=${() => send([{ path, value: 'save' }], 'Kept.')}>Keep here</button>${registered && html`<button class="small" disabled=${!able} onClick=${forget}>Forget</button>`}</span></td></tr>`;
}

const kStepsAtOnce = 5;

function PatrolSteps() {
  return [0, 5, 10, 15].map((first) => html`<${Fold} key=${first} title=${`Steps ${first} to ${first + kStepsAtOnce - 1}`} open=${first === 0}>${() => html`<div class="scroll"><table>
    <thead><tr><th>step</th><th>preset</th><th>stays, s</th><th>speed, %</th></tr></thead>
    <tbody>${kPresets.slice(first, first + kStepsAtOnce).map((n) => html`<tr key=${n}><td>${n}</td>${['', '.duration', '.speed'].map((leaf) =>
      html`<td key=${leaf}><${Field} plain label=${`Step ${n} ${leaf.slice(1) || 'preset'}`} path=${`camera.motion.auto_patrol(0).position(${n})${leaf}`} shape=${kStepShapes[leaf]} /></td>`)}</tr>`)}</tbody></table></div>`}<//>`);
}

const kStepShapes = {
  '': { kind: 'words', words: kPresets.map(String) },
  '.speed': { kind: 'number', low: 0, high: 100, step: 0.1, noSlider: true },
};

// ---- the rest of the camera

const kMore = [
  ['Name and lamps', ['camera.id', 'camera.stealth', 'camera.identify']],
  ['Focus', ['camera.focus', 'camera.focus.status', 'camera.focus.progress', 'camera.focus.adjust_mode', 'camera.focus.finefocus', 'camera.focus.nightfocus', 'camera.focus.assist.status', 'camera.focus.run_counter', 'camera.focus.date.status']],
  ['Sensor', ['camera.defect_detect.static.status', 'camera.defect_detect.static.adjust', 'camera.defect_detect.static.adjust_detail', 'camera.fpn.adjust', 'camera.fpn.adjust_detail', 'camera.fpn.num',
    'camera.image.true_daynight.ir_counter', 'camera.image.true_daynight.led_counter', 'camera.iris', 'camera.iris.lenstype']],
  ['Sound and analog picture', ['audio.input.gain', 'audio.input.powersupply.status', 'audio.input.halfduplex', 'audio.input.loopback', 'audio.output.volume', 'video.output.status', 'video.output.video_signal', 'peripheral.switch(1).status']],
];

