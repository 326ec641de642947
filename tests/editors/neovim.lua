-- Works on an example in Neovim with the plug-in, as a user would, and looks at the buffers. Run by editors_test.py in
-- a folder with solver.def, night.opt and optxv.json; the environment names the command and the file for the screen.

local command = os.getenv('OPTXV_COMMAND')
require('optxv').setup({ command = { command, 'lsp' } })
vim.o.columns, vim.o.lines = 90, 14
vim.o.hidden = true

local function lines_of(buffer)
  return vim.api.nvim_buf_get_lines(buffer, 0, -1, false)
end

local function finish(words)
  io.stderr:write(words == nil and '' or words .. '\n')
  vim.cmd(words == nil and 'qall!' or 'cquit 1')
end

local patience = 10000 -- milliseconds

-- Waits until the condition holds and gives what it gave.
local function await(what, condition)
  local started = vim.loop.now()
  while true do
    local found = condition()
    if found then
      return found
    end
    if vim.loop.now() - started > patience then
      error('waited in vain: ' .. what)
    end
    coroutine.yield()
  end
end

local function cursor_at(buffer, text)
  for number, line in ipairs(lines_of(buffer)) do
    local column = line:find(text, 1, true)
    if column then
      vim.api.nvim_win_set_cursor(0, { number, column - 1 })
      return
    end
  end
  error('not there: ' .. text)
end

local function messages(buffer)
  return vim.tbl_map(function(each)
    return each.message
  end, vim.diagnostic.get(buffer))
end

-- What stands on the screen, without the blanks at the ends of lines.
local function screen()
  vim.cmd('redraw!')
  local rows = {}
  for row = 1, vim.o.lines do
    local cells = {}
    for column = 1, vim.o.columns do
      cells[column] = vim.fn.screenstring(row, column)
    end
    rows[row] = table.concat(cells):gsub('%s+$', '')
  end
  return rows
end

local function float()
  for _, window in ipairs(vim.api.nvim_list_wins()) do
    if vim.api.nvim_win_get_config(window).relative ~= '' then
      return table.concat(lines_of(vim.api.nvim_win_get_buf(window)), '\n')
    end
  end
end

local function work()
  vim.cmd('edit night.opt')
  local night = vim.api.nvim_get_current_buf()

  await('the fault of the file', function()
    local told = messages(night)
    return #told == 1 and told[1]:find('Unknown option "metod"', 1, true)
  end)
  vim.fn.writefile(screen(), os.getenv('OPTXV_SCREEN'))

  cursor_at(night, 'metod')
  vim.api.nvim_input('Ometho<C-x><C-o>')
  await('the names to complete', function()
    local offered = vim.fn.complete_info({ 'items' }).items
    return #offered > 0 and offered[1].word:find('^method')
  end)
  vim.api.nvim_input('<C-e><Esc>dd')
  await('the line to be gone', function()
    return #lines_of(night) == 4 and vim.fn.mode() == 'n'
  end)

  cursor_at(night, 'metod')
  vim.api.nvim_input('cwmethod<Esc>')
  await('the fault to be gone', function()
    return #messages(night) == 0 and vim.fn.mode() == 'n'
  end)

  cursor_at(night, 'method')
  vim.lsp.buf.hover()
  await('the help', function()
    local text = float()
    return text and text:find('Method for the linear relaxation', 1, true)
  end)

  vim.lsp.buf.rename('lp_method')
  await('the new name here', function()
    return vim.tbl_contains(lines_of(night), 'lp_method = dual')
  end)
  local definition = await('the definition to be changed', function()
    local buffer = vim.fn.bufnr('solver.def')
    return buffer > 0 and buffer
  end)
  assert(table.concat(lines_of(definition), '\n'):find('\nlp_method  enumstr', 1, true), 'the new name in the definition')

  vim.cmd('buffer ' .. definition .. ' | silent write | buffer ' .. night)
  local wanted = vim.fn.systemlist({ command, 'format', 'solver.def', '-' }, lines_of(night))
  assert(vim.v.shell_error == 0, table.concat(wanted, '\n'))
  assert(not vim.deep_equal(lines_of(night), wanted), 'the text is to change')
  local format = vim.lsp.buf.format or vim.lsp.buf.formatting
  format({ async = true })
  await('the text to be formatted', function()
    return vim.deep_equal(lines_of(night), wanted)
  end)
end

local running = coroutine.create(work)
local timer = vim.loop.new_timer()
timer:start(0, 20, vim.schedule_wrap(function()
  if coroutine.status(running) == 'dead' then
    return
  end
  local good, why = coroutine.resume(running)
  if not good then
    finish(why)
  elseif coroutine.status(running) == 'dead' then
    finish()
  end
end))
