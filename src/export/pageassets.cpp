// SPDX-License-Identifier: GPL-2.0-or-later
#include "pageassets.h"

const char* const pageStyle = R"css(
:root {
  color-scheme: light;
  --back: #f3f3f0; --card: #fff; --text: #1c1d1f; --quiet: #595c61; --line: #d7d7d2;
  --empty: #e4e4df; --mark: #0a5a8a; --on-mark: #fff;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    color-scheme: dark;
    --back: #141517; --card: #1f2124; --text: #e9e9e6; --quiet: #a8acb2; --line: #37393d;
    --empty: #2a2c30; --mark: #8ccbf2; --on-mark: #10222e;
  }
}
* { box-sizing: border-box; }
[hidden] { display: none !important; }
body {
  margin: 0 auto; padding: 1rem 1.25rem 3rem; max-width: 110rem;
  background: var(--back); color: var(--text);
  font: 0.9375rem/1.4 system-ui, sans-serif; overflow-wrap: anywhere;
}
h1 { font-size: 1.5rem; margin: 0.25rem 0; }
h2 { font-size: 1rem; margin: 2rem 0 0.75rem; }
form + main > :first-child h2 { margin-top: 0.5rem; }
h2 .quiet { white-space: nowrap; }
h3 { font-size: 1rem; line-height: 1.3; margin: 0; }
p { margin: 0.25rem 0; }
a { color: var(--mark); }
:focus-visible { outline: 2px solid var(--mark); outline-offset: 2px; }
.quiet, .facts, dt, figcaption { color: var(--quiet); }
.quiet { font-weight: normal; }
form {
  position: sticky; top: 0; z-index: 1; display: flex; flex-wrap: wrap; align-items: center;
  gap: 0.5rem 0.75rem; padding: 0.75rem 0; background: var(--back);
}
input {
  flex: 1 1 12rem; max-width: 32rem; padding: 0.5rem 0.75rem; font: inherit; font-size: 1rem;
  color: inherit; background: var(--card); border: 1px solid var(--quiet); border-radius: 0.4rem;
}
.sheet {
  display: grid; gap: 1rem; align-items: start;
  grid-template-columns: repeat(auto-fill, minmax(min(100%, 15rem), 1fr));
}
article {
  display: flow-root; overflow: hidden; background: var(--card);
  border: 1px solid var(--line); border-radius: 0.5rem;
}
article > * { margin: 0.25rem 0.75rem; }
article > :last-child { margin-bottom: 0.7rem; }
article > .picture { margin: 0 0 0.5rem; }
article.disc { grid-column: 1 / -1; padding-top: 0.35rem; }
.picture {
  display: grid; place-items: center; aspect-ratio: 16 / 9; background: var(--empty);
  color: var(--quiet);
}
.picture img { width: 100%; height: 100%; object-fit: contain; }
.picture svg { width: 3.5rem; fill: currentColor; }
h3 svg { width: 1.2rem; margin-inline-end: 0.4rem; vertical-align: -0.2rem; fill: var(--quiet); }
ul { list-style: none; padding: 0; }
.facts li { display: inline; }
.facts li:not(:last-child)::after, summary > span:not(:last-child)::after { content: "\a0· "; }
.facts bdi, summary bdi { display: inline-block; }
.label { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
summary { cursor: pointer; }
article:not(.disc) summary { color: var(--quiet); }
summary strong {
  font-size: 0.8125rem; font-weight: 600; padding: 0.05rem 0.4rem; margin-inline-start: 0.25rem;
  border-radius: 0.3rem; background: var(--mark); color: var(--on-mark);
}
dl { margin: 0.35rem 0; max-height: 20rem; overflow: auto; }
dt { font-size: 0.8125rem; }
dd { margin: 0 0 0.35rem; white-space: pre-line; }
.pictures {
  display: grid; gap: 0.75rem; padding: 0.6rem 0;
  grid-template-columns: repeat(auto-fill, minmax(min(45%, 11rem), 1fr));
}
figure, .pictures { margin: 0; }
figure .picture { border-radius: 0.3rem; overflow: hidden; }
figcaption { font-size: 0.8125rem; }
.failures dl { max-height: none; }
.failures dt { font-size: inherit; color: inherit; margin-top: 0.5rem; }
.failures dd { color: var(--quiet); }
.many article:not(.disc) { content-visibility: auto; contain-intrinsic-size: auto 17rem; }
@media print {
  body { padding: 0; max-width: none; font-size: 9pt; background: none; }
  form { display: none; }
  .sheet { grid-template-columns: repeat(3, 1fr); gap: 3mm; }
  .pictures { grid-template-columns: repeat(5, 1fr); }
  .many article:not(.disc) { content-visibility: visible; }
  article, figure, li, dl > * { break-inside: avoid; }
  h1, h2, h3, summary, dt { break-after: avoid; }
  dl { max-height: none; overflow: visible; }
  .picture, summary strong { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
}
)css";

// Titles of one disc may show the same clip: its picture is in the page once, and copied here.
const char* const pageScript = R"js(
'use strict';
{
  for (const place of document.querySelectorAll('[data-again]')) {
    const picture = document.getElementById(place.dataset.again).cloneNode();
    picture.removeAttribute('id');
    place.replaceWith(picture);
  }

  const field = document.getElementById('filter');
  const count = document.getElementById('count');
  const none = document.getElementById('none');
  const plain = text => text.normalize('NFKD').replace(/\p{M}/gu, '').toUpperCase();
  let folders = null;

  const readFolders = () => Array.from(document.querySelectorAll('section.folder'), section => {
    const name = plain(section.querySelector('h2 bdi').textContent);
    const items = Array.from(section.querySelectorAll('article'),
                             item => ({item, text: name + '\n' + plain(item.textContent)}));
    return {section, items};
  });

  const filter = () => {
    folders = folders || readFolders();
    const words = plain(field.value).split(/\s+/).filter(Boolean);
    let left = 0;
    let all = 0;
    for (const {section, items} of folders) {
      const before = left;
      for (const {item, text} of items) {
        item.hidden = !words.every(word => text.includes(word));
        left += item.hidden ? 0 : 1;
      }
      all += items.length;
      section.hidden = left === before;
    }
    count.textContent = count.dataset.form.replace('%1', left).replace('%2', all);
    none.hidden = left > 0;
  };

  field.addEventListener('input', filter);
  field.form.addEventListener('submit', event => event.preventDefault());
  field.form.hidden = false;
  if (field.value)
    filter(); // what the browser has kept over a reload
}
)js";
