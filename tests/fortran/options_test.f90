!> The Fortran module: values by name and number, statuses, messages as data, arguments. The first argument is the
!> definition. Prints what does not hold; stops with 1 if there is anything.
program options_test
  use optxv
  implicit none
  integer :: failures = 0

  call values()
  call statuses()
  call messages()
  call arguments()
  call definitions()
  if (failures > 0) stop 1
  print '(a)', 'the module holds'

contains

  subroutine check(holds, what)
    logical, intent(in) :: holds
    character(*), intent(in) :: what
    if (holds) return
    failures = failures + 1
    print '(a)', 'does not hold: ' // what
  end subroutine check

  function definition() result(name)
    character(1000) :: name
    call get_command_argument(1, name)
  end function definition

  subroutine values()
    type(options) :: o, copy
    integer(int32) :: threads
    real(real64) :: limit, low, high
    logical :: presolve
    character(:), allocatable :: method, log_file
    character(20) :: padded = 'night run'
    type(text), allocatable :: paths(:)

    call o%read_definition(definition())
    call o%get('time_limit', limit)
    call o%get('presolve', presolve)
    call o%get('log_file', log_file)
    call check(abs(limit - 3600) < 1e-9 .and. presolve .and. log_file == 'solver run.log', 'defaults')

    call o%set('threads', 8)
    call o%set('time_limit', 0.1_real64)
    call o%set('presolve', .false.)
    call o%set('METHOD  ', 'Dual')
    call o%set('log_file', padded)
    call o%set('scale_range', 0.5_real64)
    call o%set('scale_range', 2.0_real64, which=2)
    call o%parse('read_path', 'a b')
    call o%parse('read_path', 'c')

    call o%get(o%find('threads'), threads)
    call o%get(o%find('reslim'), limit)
    call o%get('presolve', presolve)
    call o%get('method', method)
    call o%get('log_file', log_file)
    call o%get('scale_range', low)
    call o%get('scale_range', high, 2)
    call o%get('read_path', paths)
    call check(threads == 8 .and. limit == 0.1_real64 .and. .not. presolve, 'numbers')
    call check(method == 'dual' .and. log_file == 'night run' .and. len(log_file) == 9, 'texts are trimmed')
    call check(low == 0.5_real64 .and. high == 2, 'both values')
    call o%write('written.opt')
    call copy%read_definition(definition())
    call copy%read('written.opt')
    call copy%get('threads', threads)
    call copy%get('log_file', log_file)
    call check(threads == 8 .and. log_file == 'night run' .and. copy%message_count() == 0, 'what is written comes back')
    call check(size(paths) == 2 .and. paths(1)%value == 'a b' .and. paths(2)%value == 'c', 'a list')

    call o%reset('read_path')
    call o%reset(o%find('threads'))
    call o%get('read_path', paths)
    call o%get('threads', threads)
    call check(size(paths) == 0 .and. threads == 1, 'reset')
    call check(o%name(o%find('reslim')) == 'time_limit' .and. o%name(0) == '' .and. o%name(o%count() + 1) == '', 'names')
    call o%free()
    call check(o%count() == 0 .and. o%find('threads') == 0, 'freed')
  end subroutine values

  subroutine statuses()
    type(options) :: o
    integer(int32) :: status, threads
    character(:), allocatable :: word
    type(text), allocatable :: items(:)

    call o%read_definition('no such file', status)
    call check(status > 0, 'a file that is not there')
    call o%create()
    call o%read_definition(definition(), status)
    call check(status == 0, 'a definition')
    threads = -7
    call o%get('treads', threads, status=status)
    call check(status == unknown .and. threads == -7, 'an unknown name leaves the variable')
    call o%get('threads', word, status=status)
    call check(status == wrong_kind .and. .not. allocated(word), 'another kind')
    call o%get('threads', items, status)
    call check(status == wrong_kind, 'no list')
    call o%get('threads', threads, 2, status)
    call check(status == wrong_kind, 'no second value')
    call o%set('threads', 99, status=status)
    call o%get('threads', threads)
    call check(status == refused .and. threads == 1, 'a refused value')
    call o%set('log_file', repeat('x', 255), status=status)
    call check(status == too_long, 'a long text')
    call o%set(0, 1, status=status)
    call check(status == unknown, 'no number')
  end subroutine statuses

  subroutine messages()
    type(options) :: o
    type(message) :: said
    integer(int32) :: status

    call o%read_definition(definition())
    call o%read_text('threads 2' // new_line('a') // 'method primel', 'given')
    call check(o%message_count() == 4 .and. o%error_count() == 2, 'four messages')
    call o%get_message(2, said)
    call check(said%shown == '*** Value Error line 2: Unknown value for option "method" saw "primel"', 'shown')
    call check(said%kind == said_value_error .and. said%fault == 'unknown-value' .and. said%seen == 'primel', 'facts')
    call check(o%name(said%option) == 'method' .and. said%about == 'method' .and. .not. said%detail, 'its option')
    call check(said%file == 'given' .and. said%line == 2 .and. said%column == 8 .and. said%length == 6, 'its place')
    call check(size(said%nearest) == 1 .and. said%nearest(1)%value == 'primal', 'what was meant')
    call o%get_message(5, said, status)
    call check(status == unknown, 'no fifth message')
    call o%clear_messages()
    call o%add_message('mine')
    call o%get_message(1, said)
    call check(said%words == 'mine' .and. said%line == 0 .and. said%file == '', 'the message of the program')
  end subroutine messages

  !> The arguments after the definition are: --time-limit=5 model.lp threads=3 --tread=4 "--log_file=a b "
  subroutine arguments()
    type(options) :: o
    type(text), allocatable :: left(:)
    type(message) :: said
    integer(int32) :: threads
    real(real64) :: limit
    character(:), allocatable :: log_file

    call o%read_definition(definition())
    call o%read_arguments(left, keep_unknown=.true.)
    call check(size(left) == 3 .and. left(2)%value == 'model.lp' .and. left(3)%value == '--tread=4', 'what is left')
    call o%get('threads', threads)
    call o%get('time_limit', limit)
    call o%get('log_file', log_file)
    call check(threads == 3 .and. limit == 5 .and. log_file == 'a b ', 'what is taken')
    call check(o%message_count() == 0, 'no message')
    call o%read_arguments()
    call o%get_message(1, said)
    call check(said%file == 'argument 5' .and. said%fault == 'unknown-option', 'the unknown one')
    call o%read_environment('SOLVER_')
    call o%get('time_limit', limit)
    call check(limit == 77, 'the environment')
  end subroutine arguments

  subroutine definitions()
    type(options) :: o
    integer(int32) :: a
    call o%read_definition_text('a integer 1 5 0 9 1 1 A', 'text')
    call o%get('a', a)
    call check(a == 5 .and. o%message_count() == 0, 'a definition from memory')
  end subroutine definitions
end program options_test
