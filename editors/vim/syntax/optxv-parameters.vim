" Parameter text: a key, perhaps = or :=, and a value that reaches to the end of the line.
if exists('b:current_syntax')
  finish
endif
syntax case ignore

syntax match optxvComment /^\*.*$/ contains=optxvBinding
syntax match optxvBinding /^\*\s*\zsoptxv:.*$/ contained

" Of what matches at one place the later one wins, so the more general ones come first.
syntax cluster optxvValue contains=optxvText,optxvNumber,optxvWord,optxvKeep,optxvSeparator,optxvString,optxvEnd
syntax match optxvText /[^ \t:,"]\+/ contained nextgroup=@optxvValue skipwhite
syntax match optxvNumber /[-+]\=\%(\d\+\.\=\d*\|\.\d\+\)\%([ed][-+]\=\d\+\)\=\ze\%([ \t:,]\|$\)/ contained
      \ nextgroup=@optxvValue skipwhite
syntax match optxvNumber /[-+]\=\%(\$\|0x\)\x\+\ze\%([ \t:,]\|$\)/ contained nextgroup=@optxvValue skipwhite
syntax match optxvWord /\%(yes\|no\|on\|off\|true\|false\)\ze\%([ \t:,]\|$\)/ contained nextgroup=@optxvValue skipwhite
syntax match optxvWord /\%(maxint\|minint\|maxdouble\|mindouble\|eps\)\ze\%([ \t:,]\|$\)/ contained
      \ nextgroup=@optxvValue skipwhite
syntax match optxvKeep /\*\ze\%([ \t]\|$\)/ contained nextgroup=@optxvValue skipwhite
syntax match optxvSeparator /[:,]/ contained nextgroup=@optxvValue skipwhite
syntax match optxvString /"[^"]*"/ contained nextgroup=@optxvValue skipwhite
" The definition chooses the characters; these are the usual ones.
syntax match optxvEnd /[!#].*$/ contained
syntax match optxvComment /^\s*[!#].*$/

syntax match optxvAssign /:\==/ contained nextgroup=@optxvValue skipwhite
syntax match optxvElement /'[^']*'\|"[^"]*"/ contained
syntax match optxvAll /\*/ contained
syntax match optxvTie /\$/ contained nextgroup=optxvTied skipwhite
syntax match optxvTied /\a\w*/ contained nextgroup=optxvIndices,optxvTie,optxvAssign skipwhite
syntax region optxvIndices start=/[[({]/ end=/[])}]/ oneline contained contains=optxvElement,optxvAll
      \ nextgroup=@optxvValue,optxvTie,optxvAssign skipwhite
syntax match optxvAttribute /\.\a\w*/ contained nextgroup=@optxvValue,optxvAssign,optxvIndices skipwhite

syntax match optxvKey /^\s*[-\/]\=\a\w*\ze\%([ \t=]\|$\)/ nextgroup=@optxvValue,optxvAssign skipwhite
syntax match optxvOwnKey /^\s*[-\/]\{2,}\a\w*\ze\%([ \t=]\|$\)/ nextgroup=@optxvValue,optxvAssign skipwhite
syntax match optxvSymbol /^\s*\a\w*\ze\.\a/ nextgroup=optxvAttribute
syntax match optxvIndicator /^\s*\a\w*\ze\s\+\a\w*\s*\%([[({][^!#]\{-}[])}]\)\=\s*\$/ nextgroup=optxvTied skipwhite

highlight default link optxvComment Comment
highlight default link optxvEnd Comment
highlight default link optxvBinding SpecialComment
highlight default link optxvKey Identifier
highlight default link optxvOwnKey Special
highlight default link optxvSymbol Constant
highlight default link optxvAttribute Identifier
highlight default link optxvIndicator Keyword
highlight default link optxvTied Constant
highlight default link optxvTie Operator
highlight default link optxvAssign Operator
highlight default link optxvSeparator Delimiter
highlight default link optxvText String
highlight default link optxvString String
highlight default link optxvElement String
highlight default link optxvNumber Number
highlight default link optxvWord Boolean
highlight default link optxvAll Special
highlight default link optxvKeep Special

let b:current_syntax = 'optxv-parameters'
