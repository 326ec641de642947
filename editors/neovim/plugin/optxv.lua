-- Attaches the server to each buffer of its languages.

if vim.g.loaded_optxv then
  return
end
vim.g.loaded_optxv = true

vim.api.nvim_create_autocmd('FileType', {
  group = vim.api.nvim_create_augroup('optxv', {}),
  pattern = { 'optxv-parameters', 'optxv-definition' },
  callback = function(event)
    require('optxv').attach(event.buf)
  end,
})
