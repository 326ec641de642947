-- Starts the language server of the command optxv for buffers of its two languages.
-- It needs Neovim 0.7 and no other plug-in.

local optxv = {}

--- What `setup` takes, with what holds without it.
local defaults = {
  command = { 'optxv', 'lsp' }, -- the server, with its arguments
  settings = {}, -- as in optxv.json, for folders without such a file
  on_attach = nil, -- called with the client and the buffer's number
}

local options = defaults

local filetypes = { ['optxv-parameters'] = true, ['optxv-definition'] = true }

-- The client of each folder, by its name.
local clients = {}

--- The nearest folder upwards with an optxv.json, else that of the file.
local function folder_of(file)
  local folder = vim.fn.fnamemodify(file, ':p:h')
  local binding = vim.fn.findfile('optxv.json', vim.fn.escape(folder, ' ,;*?[]{}\\') .. ';')
  return binding == '' and folder or vim.fn.fnamemodify(binding, ':p:h')
end

local function client_of(folder)
  local known = clients[folder]
  if known and vim.lsp.get_client_by_id(known) then
    return known
  end
  clients[folder] = vim.lsp.start_client({
    name = 'optxv',
    cmd = options.command,
    root_dir = folder,
    settings = { optxv = options.settings },
    init_options = options.settings,
    on_exit = function()
      clients[folder] = nil
    end,
  })
  return clients[folder]
end

-- The functions of a buffer that Neovim has no keys for by itself.
local function prepare(buffer)
  vim.api.nvim_buf_set_option(buffer, 'omnifunc', 'v:lua.vim.lsp.omnifunc')
  vim.api.nvim_buf_set_option(buffer, 'formatexpr', 'v:lua.vim.lsp.formatexpr()')
end

--- Attaches the server to a buffer, and starts it if there is none for its folder.
--- @param buffer number of the buffer; the current one if nil
function optxv.attach(buffer)
  buffer = buffer or vim.api.nvim_get_current_buf()
  if not filetypes[vim.bo[buffer].filetype] then
    return
  end
  local client = client_of(folder_of(vim.api.nvim_buf_get_name(buffer)))
  if not client then
    return
  end
  vim.lsp.buf_attach_client(buffer, client)
  prepare(buffer)
  if options.on_attach then
    options.on_attach(vim.lsp.get_client_by_id(client), buffer)
  end
end

--- Sets what is given; the rest stays as it is.
--- @param given table with command, settings, on_attach; nil for none
function optxv.setup(given)
  options = vim.tbl_extend('force', defaults, given or {})
end

return optxv
