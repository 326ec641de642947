" Looks at the colours of the examples: file, text, the group that its first letter has. Run by editors_test.py.

let s:rows = [
      \ ['solver.opt', '* A clean', 'optxvComment'],
      \ ['solver.opt', 'time_limit 900', 'optxvKey'],
      \ ['solver.opt', '900', 'optxvNumber'],
      \ ['solver.opt', '! a blank', 'optxvEnd'],
      \ ['solver.opt', ':= no', 'optxvAssign'],
      \ ['solver.opt', 'night run', 'optxvText'],
      \ ['solver.opt', '"/models/last', 'optxvString'],
      \ ['solver.opt', '--note', 'optxvOwnKey'],
      \ ['solver.opt', '.priority', 'optxvAttribute'],
      \ ['solver.opt', "'jan', \\*", 'optxvElement'],
      \ ['solver.opt', 'indic balance', 'optxvIndicator'],
      \ ['solver.def', 'limits    group', 'optxvName'],
      \ ['solver.def', 'double       101', 'optxvType'],
      \ ['solver.def', '.OPT', 'optxvModifier'],
      \ ['solver.def', '"solver run', 'optxvString'],
      \ ['solver.def', ' auto     33', 'optxvHelp'],
      \ ['solver.def', 'ReadFile', 'optxvAction'],
      \ ['solver.def', 'Least and', 'optxvText'],
      \ ]

for [s:file, s:text, s:wanted] in s:rows
  if expand('%:t') !=# s:file
    execute 'edit ' . $OPTXV_EXAMPLES . '/' . s:file
  endif
  call cursor(1, 1)
  if search('\V' . s:text, 'cW') == 0
    verbose echo s:file . ': not there: ' . s:text
    cquit
  endif
  let s:found = synIDattr(synID(line('.'), col('.'), 0), 'name')
  if s:found !=# s:wanted
    verbose echo s:file . ' ' . line('.') . ':' . col('.') . ': ' . s:text . ' is ' . s:found . ', not ' . s:wanted
    cquit
  endif
endfor
qall!
