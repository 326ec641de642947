// The parts of the reference page that are the same for every table.
#pragma once

#include <string_view>

namespace command {

inline constexpr std::string_view pagestyle = R"(
:root {
  color-scheme: light dark;
  --page: #fff; --text: #1b1f24; --soft: #57606a; --line: #d0d7de; --panel: #f6f8fa;
  --link: #0550ae; --mark: #8a2d00;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14171c; --text: #e6e9ed; --soft: #a7b0ba; --line: #3a424c; --panel: #1e232a;
    --link: #8cc2ff; --mark: #ffb68a;
  }
}
* { box-sizing: border-box; }
html { scroll-padding-top: 1rem; }
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
code, dd { font-size: .95em; }
.soft { color: var(--soft); }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; margin: .5rem 0; padding: 0; list-style: none; }
nav li { padding: .3rem 0; }
form { margin: 1rem 0; }
label { display: block; font-weight: 600; }
input {
  width: 100%; padding: .5rem .6rem; font: inherit; color: inherit;
  background: var(--page); border: 1px solid var(--soft); border-radius: .3rem;
}
article { margin: .75rem 0; padding: .75rem 1rem; background: var(--panel); border: 1px solid var(--line); border-radius: .4rem; }
article:target { border-color: var(--link); }
article p { margin: .4rem 0; }
.note { color: var(--mark); font-weight: 600; }
.kept { display: block; white-space: pre-wrap; }
dl { display: grid; grid-template-columns: 7rem 1fr; gap: .15rem 1rem; margin: .5rem 0; }
dt { color: var(--soft); }
dd { margin: 0; }
dd.words { font-family: inherit; font-size: inherit; }
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
@media print {
  :root { color-scheme: light; --page: #fff; --text: #000; --soft: #333; --line: #999; --panel: #fff; --link: #000; --mark: #000; }
  body { max-width: none; padding: 0; font-size: 10pt; }
  nav, label, input, .skip { display: none; }
  article { break-inside: avoid; border-width: 1px 0 0; border-radius: 0; padding: .5rem 0; }
  h2 + article { border-top: 0; }
  h2 { break-after: avoid; }
}
)";

/// Shows the search box, and hides what does not hold every word in it.
inline constexpr std::string_view pagescript = R"(
(function () {
  'use strict';
  var form = document.getElementById('search');
  var box = document.getElementById('search-box');
  var state = document.getElementById('search-state');
  var options = Array.from(document.querySelectorAll('main article')).map(function (element) {
    return { element: element, text: element.textContent.toLowerCase() };
  });
  var sections = Array.from(document.querySelectorAll('main section'));
  function filter() {
    var words = box.value.toLowerCase().split(/\s+/).filter(Boolean);
    var shown = 0;
    options.forEach(function (option) {
      var fits = words.every(function (word) { return option.text.includes(word); });
      option.element.hidden = !fits;
      if (fits) shown += 1;
    });
    sections.forEach(function (section) {
      section.hidden = words.length > 0 && !section.querySelector('article:not([hidden])');
    });
    document.querySelectorAll('nav a').forEach(function (link) {
      var section = document.getElementById(link.hash.slice(1));
      link.parentElement.hidden = section !== null && section.hidden;
    });
    state.textContent = words.length === 0 ? '' : shown === 0 ? 'No option has all of these words'
      : shown + ' of ' + options.length + ' options shown';
  }
  function reveal() {
    var target = document.getElementById(location.hash.slice(1));
    if (target === null || target.closest('[hidden]') === null) return;
    box.value = '';
    filter();
    target.scrollIntoView();
  }
  form.hidden = false;
  form.addEventListener('submit', function (event) { event.preventDefault(); });
  box.addEventListener('input', filter);
  box.addEventListener('keydown', function (event) {
    if (event.key === 'Escape') { box.value = ''; filter(); }
  });
  window.addEventListener('hashchange', reveal);
  if (box.value !== '') filter();
})();
)";

}  // namespace command
