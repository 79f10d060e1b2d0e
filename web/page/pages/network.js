// The camera in the network. What can cut the page off is gathered, applied at once, and goes back unless it is confirmed.
import { html, useState } from '../vendor/preact-htm.js';
import { useStore, value, text } from '../store.js';
import * as tree from '../tree.js';
import { Card, Form, Forms, Stacks, Tabs, Fold } from '../parts.js';
import { Gather, Field } from '../field.js';
import { askToApply } from '../confirm.js';

const kInterface = 'network.interface(1)';
const kTabs = [['address', 'Address and web'], ['names', 'Names and time'], ['services', 'Services'], ['access', 'Who may have streams']];

const kGuardedCards = [
  { title: 'Address', commit: `${kInterface}.status=restart`, paths: [`${kInterface}.dhcp.status`, `${kInterface}.ip`, `${kInterface}.subnetmask`, 'network.gateway(ipv4).ip(0)'],
    more: [`${kInterface}.dhcp.dns`, `${kInterface}.dhcp.ntp`, `${kInterface}.dhcp.hostname`, 'network.gateway(ipv4).ip(1)', 'network.gateway(ipv4).ip(2)', 'network.gateway(ipv4).ip(3)',
      `${kInterface}.ipv6.status`, `${kInterface}.negotiation`, `${kInterface}.mtu`, `${kInterface}.dscp`, `${kInterface}.ttl.unicast`, `${kInterface}.ttl.multicast`] },
  { title: 'Web server, encrypted', commit: 'network.https(configuration).status=restart', paths: ['network.https(configuration).status', 'network.https(configuration).port', 'network.https(streaming).status'] },
  { title: 'Web server, in the clear', commit: 'network.http(configuration).status=restart', paths: ['network.http(configuration).status', 'network.http(configuration).port', 'network.http(streaming).status'] },
];

const kLabels = {
  [`${kInterface}.dhcp.status`]: 'Leased address', [`${kInterface}.ip`]: 'Address', [`${kInterface}.subnetmask`]: 'Mask', 'network.gateway(ipv4).ip(0)': 'Gateway',
  'network.https(configuration).status': 'Pages', 'network.https(configuration).port': 'Port', 'network.https(streaming).status': 'Streams',
  'network.http(configuration).status': 'Pages', 'network.http(configuration).port': 'Port', 'network.http(streaming).status': 'Streams',
};

/** Fields whose new values are sent together, by the button below them. */
function Guarded({ title, commit, paths, more = [] }) {
  useStore();
  const [drafts, setDrafts] = useState({});
  const [outcome, setOutcome] = useState(null);
  const writable = tree.mayCommit(commit);
  const gather = { get: (path) => drafts[path], set: (path, next) => setDrafts((old) => ({ ...old, [path]: next })) };
  const changed = Object.entries(drafts).filter(([path, next]) => next !== undefined && next !== text(value(path))).map(([path, next]) => ({ path, value: next }));
  const apply = async () => {
    const result = await askToApply(changed, commit).catch((failure) => ({ bad: true, text: failure.message }));
    setOutcome(result);
    if (!result.bad && result.text !== 'not sent') setDrafts({});
  };
  const field = (path) => html`<${Field} key=${path} plain=${Boolean(kLabels[path])} label=${kLabels[path]} path=${path} />`;
  return html`<${Card} title=${title}><${Gather.Provider} value=${writable ? gather : null}><div class="form">${paths.map(field)}</div>
      ${more.length > 0 && html`<${Fold} title="More">${() => html`<div class="form">${more.map(field)}</div>`}<//>`}<//>
    ${writable && html`<div class="tools"><button class="main" disabled=${!changed.length} onClick=${apply}>Apply …</button>
      <button disabled=${!changed.length} onClick=${() => { setDrafts({}); setOutcome(null); }}>Cancel</button>
      <span class="faint">It goes back by itself unless you confirm it within 90 seconds.</span></div>`}
    ${outcome && html`<p class=${outcome.bad ? 'error' : 'faint'} role="status">${outcome.text}</p>`}<//>`;
}

const kForms = {
  names: [
    ['Host name', ['network.hostname']],
    ['Name server', ['network.dns.status', 'network.dns.ip', 'network.domainname(0)', 'network.domainname(1)']],
    ['Time server', ['network.ntp.status', 'network.ntp.host', 'network.ntp.interval', 'network.ntp.unit']],
    ['Clock', ['system.date', 'system.timezone']],
  ],
  services: [
    ['RTSP', ['network.rtsp(configuration).status', 'network.rtsp(configuration).port']],
    ['ONVIF', ['network.onvif.status', 'network.onvif.comment', 'network.onvif.quality.priority(jpeg)', 'network.onvif.quality.priority(h264)', 'network.onvif.metadata(MotionDetectionEvent)']],
    ['Others', ['network.snmp_agent.status', 'network.psia.status', 'network.amx_beacon.status']],
  ],
  access: [
    ['List', ['network.access_control(stream_out).logic', ...Array.from({ length: 10 }, (_, n) => `network.access_control(stream_out).host(${n + 1})`)]],
  ],
};

const kState = [`${kInterface}.mac`, `${kInterface}.negotiation_detail`, `${kInterface}.ipv6.link_local(1)`, `${kInterface}.ipv6.global(1)`];

export default function Network({ rest }) {
  const chosen = kTabs.some(([id]) => id === rest) ? rest : 'address';
  const guarded = (i) => html`<${Guarded} key=${i} ...${kGuardedCards[i]} />`;
  return html`<h1>Network</h1><${Tabs} tabs=${kTabs} chosen=${chosen} base="network" />
    ${chosen === 'address' ? html`<${Stacks} columns=${[[guarded(0), html`<${Card} title="The port now"><${Form} paths=${kState} /><//>`], [guarded(1), guarded(2)]]} />`
      : html`<${Forms} forms=${kForms[chosen]} />`}`;
}
