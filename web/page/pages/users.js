// The accounts: whose they are, their passwords, and what each class may do.
import { html } from '../vendor/preact-htm.js';
import { useStore, useTexts } from '../store.js';
import * as tree from '../tree.js';
import { Card, stateDot } from '../parts.js';
import { Field } from '../field.js';
import { ask, send } from '../confirm.js';

const kNumbers = [0, 1, 2, 3];
const kKinds = [['admin', 'Administrators', 'reads and writes all that is not the factory\'s'], ['operator', 'Operators', 'works with the picture, the streams and the alarms'], ['user', 'Users', 'looks']];

const accountName = (kind, n) => (n ? kind + n : kind);

function Accounts({ kind, title, does }) {
  const { me } = useStore();
  const states = useTexts(Object.fromEntries(kNumbers.map((n) => [n, `system.password.${kind}(${n}).status`])));
  const exists = (n) => states[n] !== undefined && states[n] !== 'unregistered';
  const remove = async (n) => {
    const name = accountName(kind, n);
    const own = me.user === name;
    const last = kind === 'admin' && kNumbers.filter(exists).length === 1;
    const words = own ? 'It is the account you are logged in with: this page will be closed to you.' : last ? 'It is the last administrator\'s account.' : `Whoever uses ${name} can no longer log in.`;
    if (!await ask({ title: `Delete ${name}`, text: words, yes: 'Delete', danger: own || last })) return;
    await send([{ path: `system.password.${kind}(${n}).status`, value: 'initialize' }], `${name} is deleted.`);
  };
  return html`<${Card} title=${title} aside=${html`<span class="faint">${does}</span>`}><div class="scroll"><table class="rows"><thead><tr><th>account</th><th>state</th><th>password</th><th><span class="aloud">does</span></th></tr></thead>
    <tbody>${kNumbers.map((n) => html`<tr key=${n}><td><b>${accountName(kind, n)}</b>${me?.user === accountName(kind, n) && html` <span class="faint">you</span>`}</td><td>${stateDot(exists(n), ['exists', 'none'])}</td>
      <td><${Field} plain label=${`Password of ${accountName(kind, n)}`} path=${`system.password.${kind}(${n})`} /></td>
      <td>${exists(n) && html`<button class="small" onClick=${() => remove(n)}>Delete …</button>`}</td></tr>`)}</tbody></table></div><//>`;
}

/** How many parameters each class reads and writes. */
function Classes() {
  const { me } = useStore();
  const names = ['administrator', 'operator', 'user'];
  const count = (name, at) => tree.all().filter(({ rights }) => rights[name]?.[at] !== '-').length;
  return html`<${Card} title="Classes"><table><thead><tr><th>class</th><th class="num">reads</th><th class="num">writes</th></tr></thead><tbody>${names.map((name) =>
    html`<tr key=${name}><td>${name}${me?.class === name && html` <span class="faint">you</span>`}</td><td class="num">${count(name, 0)}</td><td class="num">${count(name, 1)}</td></tr>`)}</tbody></table>
    <p class="faint">of ${tree.all().length} parameters; the camera's daemon judges each request.</p><//>`;
}

export default function Users() {
  const allowed = tree.mayRead(tree.find('system.password.admin.status'));
  return html`<h1>Users</h1><div class="grid two">${allowed ? kKinds.map(([kind, title, does]) => html`<${Accounts} key=${kind} kind=${kind} title=${title} does=${does} />`)
    : html`<${Card} title="Accounts"><p class="faint">Only administrators see and change the accounts.</p><//>`}<${Classes} /></div>`;
}
