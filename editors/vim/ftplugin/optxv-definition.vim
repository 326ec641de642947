" Comments are whole lines with a star in column 1.
if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1

setlocal comments=:* commentstring=*\ %s formatoptions-=t
let b:undo_ftplugin = 'setlocal comments< commentstring< formatoptions<'
