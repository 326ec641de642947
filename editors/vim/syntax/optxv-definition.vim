" A definition: a record a line, and lines that begin with a blank and continue it.
if exists('b:current_syntax')
  finish
endif
syntax case ignore

syntax match optxvComment /^\*.*$/
syntax match optxvName /^\.\=\a\w*/ nextgroup=optxvType,optxvBadType skipwhite
syntax match optxvBadType /\S\+/ contained
syntax match optxvType /\%(integer\|double\|string\|boolean\|enumstr\|enumint\)\ze\%([ \t.]\|$\)/ contained
      \ nextgroup=optxvModifier,@optxvField skipwhite
syntax match optxvType /\%(multilist\|strlist\|macro\|group\)\ze\%(\s\|$\)/ contained nextgroup=@optxvField skipwhite
syntax match optxvType /\%(deprecated\|obsolete\|indicator\|lookup\|eolcomm\)\ze\%(\s\|$\)/ contained
      \ nextgroup=optxvText skipwhite
syntax match optxvType /synonym\ze\%(\s\|$\)/ contained nextgroup=optxvMember skipwhite
syntax match optxvType /immediate\ze\%(\s\|$\)/ contained nextgroup=optxvAction,optxvBadType skipwhite
syntax match optxvModifier /\.\%(nv\|opt\|two\)\>/ contained nextgroup=@optxvField skipwhite
syntax match optxvAction /\%(ReadFile\|EolFlag\|NoBounds\|Message\|Help\)\ze\%(\s\|$\)/ contained
      \ nextgroup=@optxvField skipwhite
syntax match optxvMember /\a\w*/ contained

" Numbers and quoted texts in a row; the first word that is neither begins the text.
syntax cluster optxvField contains=optxvString,optxvNumber,optxvText
syntax match optxvText /[^ \t0-9".].*$/ contained
syntax match optxvNumber /[-+]\=\%(\d\+\.\=\d*\|\.\d\+\)\%([ed][-+]\=\d\+\)\=\ze\%(\s\|$\)/ contained
      \ nextgroup=@optxvField skipwhite
syntax match optxvNumber /[-+]\=\%(\$\|0x\)\x\+\ze\%(\s\|$\)/ contained nextgroup=@optxvField skipwhite
syntax match optxvNumber /\%(maxint\|minint\|maxdouble\|mindouble\|eps\)\ze\%(\s\|$\)/ contained
      \ nextgroup=@optxvField skipwhite
syntax match optxvString /"[^"]*"/ contained nextgroup=@optxvField skipwhite
" The default of a text or of an enumeration, after the number of the program.
syntax match optxvString /\%(^\a\w*\s\+\%(string\|enumstr\)\S*\s\+\S\+\s\+\)\@<=[^ \t"]\+/ contained
      \ nextgroup=@optxvField skipwhite

syntax match optxvHelp /^ .*$/

" A line that begins otherwise ends the definition: nothing after it is read.
syntax region optxvUnread start=/^\%([^A-Za-z.* ]\|\.\A\)/ end=/\%$/

highlight default link optxvComment Comment
highlight default link optxvName Identifier
highlight default link optxvType Type
highlight default link optxvModifier StorageClass
highlight default link optxvAction Function
highlight default link optxvMember Identifier
highlight default link optxvNumber Number
highlight default link optxvString String
highlight default link optxvText String
highlight default link optxvHelp String
highlight default link optxvBadType Error
highlight default link optxvUnread Comment

let b:current_syntax = 'optxv-definition'
