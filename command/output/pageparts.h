// The parts of the reference page that are the same for every table.
#pragma once

#include <string_view>

namespace command {

inline constexpr std::string_view pagestyle = R"(
:root {
  color-scheme: light dark;
  --page: #fff; --text: #1b1f24; --soft: #57606a; --line: #d0d7de; --panel: #f6f8fa;
  --link: #0550ae; --mark: #8a2d00; --hit: #ffe08a; --hit-text: #1b1f24;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14171c; --text: #e6e9ed; --soft: #a7b0ba; --line: #3a424c; --panel: #1e232a;
    --link: #8cc2ff; --mark: #ffb68a; --hit: #6b5200; --hit-text: #fff;
  }
}
* { box-sizing: border-box; }
html { scroll-padding-top: 7.5rem; }
body {
  margin: 0 auto; padding: 1rem 1.25rem 4rem; max-width: 54rem;
  background: var(--page); color: var(--text);
  font: 1rem/1.55 system-ui, sans-serif; overflow-wrap: anywhere;
}
a { color: var(--link); }
:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.skip { position: absolute; left: -100rem; }
.skip:focus { position: static; }
h1 { font-size: 1.7rem; line-height: 1.25; margin: 1rem 0 .25rem; }
h2 { font-size: 1.3rem; margin: 2.5rem 0 .5rem; padding-bottom: .25rem; border-bottom: 2px solid var(--line); }
h3 { font-size: 1.05rem; margin: 0; }
h3, code, dd { font-family: ui-monospace, monospace; }
h3 a { color: inherit; text-decoration: none; }
h3 a:hover { text-decoration: underline; }
dd a, .name { unicode-bidi: isolate; }
mark { background: var(--hit); color: var(--hit-text); border-radius: .15rem; }
code, dd { font-size: .95em; }
.soft { color: var(--soft); }
ul { margin: 0; padding: 0; list-style: none; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; margin: .5rem 0; max-height: 14rem; overflow: auto; }
nav li { display: block; padding: .3rem 0; }
nav.many ul { display: block; }
nav.many li { content-visibility: auto; contain-intrinsic-height: auto 2.15rem; }
nav .soft { white-space: nowrap; }
form { position: sticky; top: 0; z-index: 1; margin: 0 -.25rem; padding: .75rem .25rem .5rem; background: var(--page); }
form p { margin: .25rem 0 0; min-height: 1.55em; }
label { display: block; font-weight: 600; }
input {
  width: 100%; padding: .5rem .6rem; font: inherit; color: inherit;
  background: var(--page); border: 1px solid var(--soft); border-radius: .3rem;
}
article {
  margin: .75rem 0; padding: .75rem 1rem;
  background: var(--panel); border: 1px solid var(--line); border-radius: .4rem;
  content-visibility: auto; contain-intrinsic-size: auto 12rem;
}
#found article::before { content: attr(data-group); float: right; margin-left: 1rem; color: var(--soft); font-size: .9em; }
article:target { border-color: var(--link); }
article p { margin: .4rem 0; }
.note { color: var(--mark); font-weight: 600; }
dl { display: grid; grid-template-columns: 7rem 1fr; gap: .15rem 1rem; margin: .5rem 0; }
dt { color: var(--soft); }
dd { margin: 0; }
dd.words { font-family: inherit; font-size: inherit; }
dd .words { font-family: system-ui, sans-serif; font-size: 1.05em; }
table { border-collapse: collapse; width: 100%; margin: .5rem 0; }
thead th:first-child { width: 30%; }
caption { text-align: left; color: var(--soft); }
th, td { text-align: left; vertical-align: top; padding: .2rem .75rem .2rem 0; border-top: 1px solid var(--line); }
[hidden] { display: none !important; }
@media (max-width: 30rem) {
  body { padding: .5rem .75rem 3rem; }
  dl { grid-template-columns: 1fr; gap: 0; }
  dd { margin-bottom: .3rem; }
}
@media (min-width: 76rem) {
  body { max-width: 74rem; padding-left: 18.5rem; }
  nav { position: fixed; top: 0; bottom: 0; left: max(1.25rem, 50vw - 36rem); width: 15.5rem; overflow: auto; padding: 1rem .25rem; }
  nav ul { display: block; max-height: none; }
}
@media print {
  :root { color-scheme: light; --page: #fff; --text: #000; --soft: #333; --line: #999; --panel: #fff; --link: #000; --mark: #000; }
  body { max-width: none; padding: 0; font-size: 10pt; }
  nav, label, input, .skip { display: none; }
  form { position: static; }
  article { content-visibility: visible; break-inside: avoid; border-width: 1px 0 0; border-radius: 0; padding: .5rem 0; }
  h2 + article { border-top: 0; }
  h2 { break-after: avoid; }
}
)";

/// The search, which the script shows.
inline constexpr std::string_view pagesearch = R"(<form id="search" role="search" hidden>
<label for="search-box">Search names and texts</label>
<input id="search-box" type="search" autocomplete="off" spellcheck="false">
<p id="search-state" class="soft" role="status"></p>
</form>
)";

/// Where the options that fit a search are while it lasts, the best first.
inline constexpr std::string_view pagefound = R"(<div id="found" hidden>
<section aria-labelledby="found-names"><h2 id="found-names">Found by name</h2></section>
<section aria-labelledby="found-texts"><h2 id="found-texts">Found in texts</h2></section>
<p id="found-rest" class="soft" hidden></p>
</div>
)";

/// Searches while the user types: the options that contain every word move from their groups to the
/// list of what was found, and go back afterwards. So that typing never waits for a large table, a
/// search looks through texts that were folded before, and only what can be seen is moved and
/// marked. The search is kept in the address as "#?q=words".
inline constexpr std::string_view pagescript = R"(
(function () {
  'use strict';
  const byId = id => document.getElementById(id);
  const [form, box, state, found, rest, groups] =
    ['search', 'search-box', 'search-state', 'found', 'found-rest', 'groups'].map(byId);
  const lists = found.querySelectorAll('section');
  const entries = document.querySelectorAll('nav li');
  const batch = 20;
  const number = new Intl.NumberFormat('en').format;
  const lower = text => text.toLowerCase().replace(/[\s-]/g, '_');
  const bare = text => text.toLowerCase().replace(/[\s_-]+/g, '');  // as names are compared
  const looked = 'h3, p, dd, td, tbody th';  // not the labels
  const named = 'h3, .name';

  const sections = Array.from(groups.children, (element, i) => ({
    title: element.querySelector('h2').textContent, entry: entries[i],
    options: Array.from(element.querySelectorAll('article'), element => ({ element })),
  }));
  sections.forEach(section => section.options.forEach(option => { option.section = section; }));
  const options = sections.flatMap(section => section.options);
  let indexed = false;
  let results = null;  // what was found, the best first; null while nothing is searched for
  let shown = 0;       // so many of them are away from their groups
  let pattern = {};    // what to mark: in names, in texts

  function index() {
    if (indexed) return;
    indexed = true;
    options.forEach((option, place) => {
      const texts = (parts, fold) => Array.from(option.element.querySelectorAll(parts), part => fold(part.textContent));
      option.names = '\n' + texts(named, bare).join('\n') + '\n';
      option.text = texts(looked, lower).join('\n');
      option.place = place;
      option.home = option.element.parentElement;
      option.next = option.element.nextElementSibling;
    });
  }

  // 0 the name itself, 1 a name that begins with it, 2 words of names, 3 words of texts, 4 nothing.
  function rank(option, words, whole) {
    if (whole !== '' && option.names.includes('\n' + whole)) return option.names.includes('\n' + whole + '\n') ? 0 : 1;
    if (words.every(word => word.bare !== '' && option.names.includes(word.bare))) return 2;
    const fits = word => option.text.includes(word.lower) || (word.bare !== '' && option.names.includes(word.bare));
    return words.every(fits) ? 3 : 4;
  }

  function patternof(words) {
    const escaped = text => text.replace(/[.*+?^${}()|[\]\\\/]/g, '\\$&');
    const any = parts => parts.length === 0 ? null : new RegExp(parts.sort((a, b) => b.length - a.length).join('|'), 'gi');
    const names = words.filter(word => word.bare !== '').map(word => Array.from(word.bare, escaped).join('[\\s_-]*'));
    const texts = words.map(word => escaped(word.lower).replaceAll('_', '[\\s_-]'));
    return { names: any(names), texts: any(texts) };
  }

  function markin(node, wanted) {
    const pieces = [];
    let end = 0;
    for (const hit of wanted === null ? [] : node.data.matchAll(wanted)) {
      const mark = document.createElement('mark');
      mark.textContent = hit[0];
      pieces.push(node.data.slice(end, hit.index), mark);
      end = hit.index + hit[0].length;
    }
    if (end > 0) node.replaceWith(...pieces, node.data.slice(end));
  }

  function unmark(option) {
    option.element.querySelectorAll('mark').forEach(mark => mark.replaceWith(mark.textContent));
    option.element.normalize();
  }

  function mark(option) {
    const nodes = [];
    const walker = document.createTreeWalker(option.element, NodeFilter.SHOW_TEXT);
    while (walker.nextNode()) if (walker.currentNode.parentElement.closest(looked)) nodes.push(walker.currentNode);
    nodes.forEach(node => markin(node, node.parentElement.closest(named) ? pattern.names : pattern.texts));
  }

  // Shows the next of what was found; the rest follows near the end of the list.
  function more(count) {
    const next = results.slice(shown, shown + count);
    next.forEach(option => {
      mark(option);
      option.element.dataset.group = option.section.title;
    });
    [next.filter(option => option.rank < 3), next.filter(option => option.rank === 3)].forEach((part, i) => {
      lists[i].append(...part.map(option => option.element));
      if (part.length > 0) lists[i].hidden = false;
    });
    shown += next.length;
    rest.hidden = shown === results.length;
    rest.textContent = 'and ' + number(results.length - shown) + ' more';
  }

  function sendhome() {
    const moved = results === null ? [] : results.slice(0, shown);
    moved.sort((a, b) => b.place - a.place).forEach(option => {
      unmark(option);
      option.home.insertBefore(option.element, option.next);
    });
    lists.forEach(list => { list.hidden = true; });
    shown = 0;
  }

  function find(words) {
    const whole = words.map(word => word.bare).join('');
    const ranked = [[], [], [], [], []];
    sections.forEach(section => { section.count = 0; });
    for (const option of options) {
      option.rank = rank(option, words, whole);
      ranked[option.rank].push(option);
      if (option.rank < 4) option.section.count += 1;
    }
    return ranked.slice(0, 4).flat();
  }

  function tellcounts() {
    const total = number(options.length);
    state.textContent = results === null ? '' : results.length === 0 ? 'No option has all of these words'
      : number(results.length) + ' of ' + total + ' options found';
    for (const section of sections) {
      const all = section.options.length;
      const text = results === null ? number(all) : number(section.count) + ' of ' + number(all);
      if (section.told === text) continue;
      section.told = text;
      section.entry.hidden = results !== null && section.count === 0;
      section.entry.querySelector('span').textContent = '(' + text + ')';
    }
  }

  function search() {
    const words = box.value.split(/\s+/).filter(Boolean).map(word => ({ lower: lower(word), bare: bare(word) }));
    if (words.length === 0 && results === null) return;
    index();
    sendhome();
    results = words.length === 0 ? null : find(words);
    pattern = patternof(words);
    found.hidden = results === null;
    groups.hidden = results !== null;
    tellcounts();
    if (results !== null) more(batch);
  }

  // The first search makes a step of the history, so that "back" leads to the whole page again.
  function keep() {
    const query = box.value.trim();
    const searched = location.hash.startsWith('#?');
    if (query === '' && !searched) return;
    const address = query === '' ? location.href.split('#')[0] : '#?' + new URLSearchParams({ q: query });
    try {
      history[searched ? 'replaceState' : 'pushState'](null, '', address);
    } catch { /* a browser may refuse this if the user types very fast; the next letter tries again */ }
  }

  function type() {
    search();
    keep();
    if (results !== null) window.scrollTo(0, 0);
  }

  function clear() {
    box.value = '';
    search();
  }

  // Again in the next frames: what the browser had not laid out before gets its height only then.
  function bring(element, frames = 5) {
    element.scrollIntoView();
    if (frames > 0) requestAnimationFrame(() => bring(element, frames - 1));
  }

  function follow() {
    if (location.hash === '' || location.hash.startsWith('#?')) {
      box.value = new URLSearchParams(location.hash.slice(2)).get('q') || '';
      return search();
    }
    const target = byId(location.hash.slice(1));
    if (target === null || results === null) return;
    if (groups.contains(target)) clear();
    bring(target);
  }

  // While something is searched for, a group's link leads to the first option of it that was found.
  function visit(event, section) {
    if (results === null || event.ctrlKey || event.metaKey || event.shiftKey) return;
    event.preventDefault();
    go(results.findIndex(option => option.section === section));
  }

  function go(place) {
    if (place >= shown) more(place - shown + batch);
    bring(results[place].element);
    results[place].element.querySelector('h3 a').focus();
  }

  form.hidden = false;
  form.addEventListener('submit', event => { event.preventDefault(); if (results !== null && results.length > 0) go(0); });
  box.addEventListener('input', type);
  box.addEventListener('keydown', event => {
    if (event.key !== 'Escape') return;
    event.preventDefault();
    clear();
    keep();
  });
  sections.forEach(section => section.entry.addEventListener('click', event => visit(event, section)));
  window.addEventListener('hashchange', follow);
  window.addEventListener('beforeprint', () => { if (results !== null) more(results.length); });
  const end = new IntersectionObserver(seen => {
    if (!seen[seen.length - 1].isIntersecting || rest.hidden) return;
    more(batch);
    end.unobserve(rest);  // it may be in sight still, which would be no news
    end.observe(rest);
  }, { rootMargin: '1000px' });
  end.observe(rest);
  follow();
  (window.requestIdleCallback || setTimeout)(index);
})();
)";

}  // namespace command
