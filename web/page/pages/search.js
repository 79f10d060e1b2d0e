// The parameters that fit a search.
import { html, useState, useEffect } from '../vendor/preact-htm.js';
import * as tree from '../tree.js';
import { Card, Lines } from '../parts.js';

const kMost = 12;  // shown, and looked at, at once

export default function Search({ rest }) {
  const [most, setMost] = useState(kMost);
  useEffect(() => setMost(kMost), [rest]);
  const found = rest.trim() ? tree.search(rest) : tree.all();
  return html`<h1>Search</h1><${Card} title=${rest.trim() ? `“${rest}”` : 'All parameters'} aside=${html`<span class="count" role="status">${found.length} of ${tree.all().length}</span>`}>
    <div class="form hit">${found.slice(0, most).map((parameter) => html`<${Lines} key=${parameter.path} parameter=${parameter} />`)}</div>
    ${!found.length && html`<p class="faint">No parameter has these words in its path, its sentence or its unit.</p>`}
    ${found.length > most && html`<div class="tools"><button onClick=${() => setMost(most + kMost)}>Show more</button></div>`}<//>`;
}
