/* Finds functions, members and constants in the reference, by names and what the headers say, as quorel.search() does:
   the beginning of each word is enough, what has all words comes first, names count more than what is told. It works
   without a server. The index is loaded when the page of the search is there. */
(function () {
  'use strict';
  if (!document.getElementById('search-results')) return;
  var root = document.documentElement.dataset.content_root || DOCUMENTATION_OPTIONS.URL_ROOT;
  if (!root.endsWith('/')) root += '/';
  var MOST = 60;

  function words(text) {
    return text.replace(/([a-z0-9])([A-Z])/g, '$1 $2').toLowerCase().split(/[^a-z0-9]+/).filter(Boolean);
  }

  function stem(word) {
    return word.length > 4 ? word.replace(/(ing|es|ed|s)$/, '') : word;
  }

  function score(entry, asked, whole) {
    if (entry[0].toLowerCase() === whole) return 1000;
    var names = words(entry[0]), told = words(entry[3]), sum = 0;
    for (var i = 0; i < asked.length; i++) {
      var begins = function (word) { return word.startsWith(asked[i]); };
      if (names.indexOf(asked[i]) >= 0) sum += 12;
      else if (names.some(begins)) sum += 9;
      else if (told.some(begins)) sum += 4;
      else return 0;
    }
    return sum + (entry[1] === 'function' ? 3 : entry[1] === 'member' ? 0 : 1) - names.length / 8;
  }

  function show(found, query) {
    var old = document.getElementById('found');
    if (old) old.remove();
    var part = document.createElement('div');
    part.id = 'found';
    var title = document.createElement('h2');
    title.textContent = found.length ? 'In the reference' : 'Nothing in the reference fits';
    part.appendChild(title);
    var list = document.createElement('ul');
    found.slice(0, MOST).forEach(function (each) {
      var item = document.createElement('li'), link = document.createElement('a');
      link.href = root + each[2];
      link.textContent = each[0];
      item.appendChild(link);
      [['kind', each[1]], ['told', each[3]]].forEach(function (pair) {
        var span = document.createElement('span');
        span.className = pair[0];
        span.textContent = pair[1];
        item.appendChild(span);
      });
      list.appendChild(item);
    });
    part.appendChild(list);
    var results = document.getElementById('search-results');
    results.parentNode.insertBefore(part, results);
  }

  window.quorelIndex = function (entries) {
    var query = new URLSearchParams(location.search).get('q') || '';
    var whole = query.trim().toLowerCase(), asked = words(query).map(stem);
    if (!asked.length) return;
    var found = entries.map(function (each) { return [score(each, asked, whole), each]; })
      .filter(function (pair) { return pair[0] > 0; })
      .sort(function (a, b) { return b[0] - a[0] || (a[1][0] < b[1][0] ? -1 : 1); });
    show(found.map(function (pair) { return pair[1]; }), query);
  };
  var script = document.createElement('script');
  script.src = root + 'find-index.js';
  document.head.appendChild(script);
})();
