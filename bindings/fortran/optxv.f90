!> The run-time options of a solver, for Fortran: one source above the C interface of the library.
!>
!>     use optxv
!>     type(options) :: o
!>     real(real64) :: limit
!>
!>     call o%read_definition('solver.def')
!>     call o%read('solver.opt')
!>     call o%read_arguments()
!>     call o%get('time_limit', limit)
!>
!> Texts are as Fortran has them: those that go in may have blanks at their end, which do not count; those that come out
!> are allocatable and have their own length.
!>
!> Each subroutine has a last argument `status`, which may be left out: 0, or what is wrong with the call (unknown, ...,
!> or an error number of the system). Where it is left out and something is wrong, the program stops with a sentence
!> (error stop). What a user wrote wrongly is a message in the queue, and never stops a read.
!>
!> An `options` is used by one thread at a time; different ones are free of each other. It is freed when it goes out of
!> its scope, and is not to be assigned to another.
module optxv
  use, intrinsic :: iso_c_binding
  use, intrinsic :: iso_fortran_env, only: int32, int64, real64
  implicit none
  private

  public :: int32, int64, real64, options, message, text
  public :: unknown, wrong_kind, refused, too_long, bad_argument
  public :: said_echo, said_help, said_definition_error, said_value_error, said_value_warning, said_deprecated, &
            said_file_enter, said_file_leave, said_queue_full, said_error

  ! What a status can be, beside 0 and the system's error numbers.
  integer(int32), parameter :: unknown = -1      !< no option, message, ... of that name or number
  integer(int32), parameter :: wrong_kind = -2   !< the option is of another kind, or has no second value
  integer(int32), parameter :: refused = -3      !< the value was refused; messages in the queue say why
  integer(int32), parameter :: too_long = -4     !< a text of 255 bytes or more, or a file name of more than 255
  integer(int32), parameter :: bad_argument = -6 !< a number outside its range

  ! The kinds of message.
  integer(int32), parameter :: said_echo = 0, said_help = 1, said_definition_error = 2, said_value_error = 3, &
                               said_value_warning = 4, said_deprecated = 5, said_file_enter = 6, said_file_leave = 7, &
                               said_queue_full = 8, said_error = 9

  integer, parameter :: buffer_size = 256

  !> A text of its own length, for arrays of texts.
  type :: text
    character(:), allocatable :: value
  end type text

  !> One message of the queue.
  type :: message
    integer(int32) :: kind = 0              !< said_...
    logical :: detail = .false.             !< it adds to the message before it
    integer(int32) :: option = 0            !< the number of the option that it is about, or 0
    character(:), allocatable :: shown      !< the line for people
    character(:), allocatable :: words      !< without the words for its kind and without its line number
    character(:), allocatable :: fault      !< the cause by name, such as unknown-option; empty if it tells of none
    character(:), allocatable :: about      !< the name, key or file that it is about
    character(:), allocatable :: seen       !< what was found where something else was expected
    character(:), allocatable :: file       !< where the fault is; empty, with a line of 0, if it has no place
    integer(int64) :: line = 0, column = 0, length = 0   !< from 1; columns and length in bytes
    type(text), allocatable :: nearest(:)   !< what may have been meant, the nearest first
  end type message

  !> A set of options. The first read of a definition makes it, or `create`.
  type :: options
    private
    type(c_ptr) :: handle = c_null_ptr
  contains
    procedure :: create
    procedure :: free
    procedure :: read_definition
    procedure :: read_definition_text
    procedure :: read => read_parameters
    procedure :: read_text
    procedure :: read_arguments
    procedure :: read_environment
    procedure :: write => write_parameters
    procedure :: count => option_count
    procedure :: find
    procedure :: name => option_name
    procedure :: message_count
    procedure :: error_count
    procedure :: get_message
    procedure :: add_message
    procedure :: clear_messages
    procedure, private :: get_integer_nr, get_real_nr, get_logical_nr, get_text_nr
    procedure, private :: get_integer_name, get_real_name, get_logical_name, get_text_name
    procedure, private :: set_integer_nr, set_real_nr, set_logical_nr, set_text_nr
    procedure, private :: set_integer_name, set_real_name, set_logical_name, set_text_name
    procedure, private :: get_list_nr, get_list_name, reset_nr, reset_name, parse_nr, parse_name
    procedure, private :: not_assigned
    !> get(name or number, value [, which] [, status]): an integer, a real, a logical for a Boolean, a text, or an array
    !> of texts for a list. `which` is 1 or 2, of two values. The default of an option that is not set.
    generic :: get => get_integer_nr, get_real_nr, get_logical_nr, get_text_nr, get_list_nr, &
                      get_integer_name, get_real_name, get_logical_name, get_text_name, get_list_name
    !> set(name or number, value [, which] [, status]); a refused value leaves the option as it was.
    generic :: set => set_integer_nr, set_real_nr, set_logical_nr, set_text_nr, &
                      set_integer_name, set_real_name, set_logical_name, set_text_name
    !> parse(name or number, text [, which] [, status]): sets an option of any kind from a text, as parameter text
    !> would; a list gets one more item.
    generic :: parse => parse_nr, parse_name
    !> reset(name or number [, status]): unsets an option.
    generic :: reset => reset_nr, reset_name
    generic :: assignment(=) => not_assigned
    final :: finalize
  end type options

  type, bind(c) :: c_view
    type(c_ptr) :: bytes
    integer(c_size_t) :: size
  end type c_view

  type, bind(c) :: c_place
    type(c_ptr) :: file
    integer(c_int64_t) :: line, column, length
  end type c_place

  type, bind(c) :: c_message
    integer(c_int32_t) :: number, kind, fault, detail, option, field
    type(c_view) :: text, about, seen
    type(c_place) :: place
  end type c_message

  type, bind(c) :: c_option
    integer(c_int32_t) :: kind, takes, data, reference, group, helpcontext, marks, defined, recent, items, helplines, &
                          runtime, default_integer, low_integer, high_integer
    real(c_double) :: default_real, low_real, high_real
    type(c_view) :: default_text, name, help, markedtext
  end type c_option

  !> An argument of the program, zero-terminated.
  type :: c_word
    character(kind=c_char), allocatable :: bytes(:)
  end type c_word

  interface
    function optxv_status_text(status) bind(c) result(words)
      import; integer(c_int32_t), value :: status; type(c_ptr) :: words
    end function
    function optxv_create(handle) bind(c) result(status)
      import; type(c_ptr), intent(out) :: handle; integer(c_int32_t) :: status
    end function
    subroutine optxv_free(handle) bind(c)
      import; type(c_ptr), intent(inout) :: handle
    end subroutine
    function optxv_read_definition(handle, filename) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: filename(*); integer(c_int32_t) :: status
    end function
    function optxv_read_parameters(handle, filename) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: filename(*); integer(c_int32_t) :: status
    end function
    function optxv_write_parameters(handle, filename) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: filename(*); integer(c_int32_t) :: status
    end function
    function optxv_read_definition_text(handle, name, bytes, size) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: name(*), bytes(*)
      integer(c_size_t), value :: size; integer(c_int32_t) :: status
    end function
    function optxv_read_parameter_text(handle, name, bytes, size) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: name(*), bytes(*)
      integer(c_size_t), value :: size; integer(c_int32_t) :: status
    end function
    function optxv_read_arguments(handle, argc, argv, flags) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int), intent(inout) :: argc; type(c_ptr), intent(inout) :: argv(*)
      integer(c_int32_t), value :: flags; integer(c_int32_t) :: status
    end function
    function optxv_read_environment(handle, prefix) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: prefix(*); integer(c_int32_t) :: status
    end function
    function optxv_find(handle, name, size, number) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: name(*); integer(c_size_t), value :: size
      integer(c_int32_t), intent(inout) :: number; integer(c_int32_t) :: status
    end function
    function optxv_get_integer_nr(handle, number, which, value) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which
      integer(c_int32_t), intent(inout) :: value; integer(c_int32_t) :: status
    end function
    function optxv_get_real_nr(handle, number, which, value) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which
      real(c_double), intent(inout) :: value; integer(c_int32_t) :: status
    end function
    function optxv_get_text_nr(handle, number, which, value) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which
      type(c_view), intent(inout) :: value; integer(c_int32_t) :: status
    end function
    function optxv_set_integer_nr(handle, number, which, value) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which, value; integer(c_int32_t) :: status
    end function
    function optxv_set_real_nr(handle, number, which, value) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which; real(c_double), value :: value
      integer(c_int32_t) :: status
    end function
    function optxv_set_text_nr(handle, number, which, bytes, size) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which
      character(kind=c_char), intent(in) :: bytes(*); integer(c_size_t), value :: size; integer(c_int32_t) :: status
    end function
    function optxv_parse_value(handle, number, which, bytes, size) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, which
      character(kind=c_char), intent(in) :: bytes(*); integer(c_size_t), value :: size; integer(c_int32_t) :: status
    end function
    function optxv_reset(handle, number) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number; integer(c_int32_t) :: status
    end function
    function optxv_list_count(handle, number) bind(c) result(count)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number; integer(c_int32_t) :: count
    end function
    function optxv_list_item(handle, number, position, item) bind(c) result(good)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number, position
      type(c_view), intent(inout) :: item; integer(c_int32_t) :: good
    end function
    function optxv_option_count(handle) bind(c) result(count)
      import; type(c_ptr), value :: handle; integer(c_int32_t) :: count
    end function
    function optxv_option_info(handle, number, option) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number
      type(c_option), intent(inout) :: option; integer(c_int32_t) :: status
    end function
    function optxv_message_count(handle) bind(c) result(count)
      import; type(c_ptr), value :: handle; integer(c_int32_t) :: count
    end function
    subroutine optxv_error_count(handle, errors, warnings) bind(c)
      import; type(c_ptr), value :: handle; integer(c_int32_t), intent(inout) :: errors, warnings
    end subroutine
    function optxv_message_info(handle, number, message) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number
      type(c_message), intent(inout) :: message; integer(c_int32_t) :: status
    end function
    function optxv_show_message(handle, number, text) bind(c) result(status)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number
      character(kind=c_char), intent(inout) :: text(*); integer(c_int32_t) :: status
    end function
    function optxv_message_nearest(handle, number, nearest) bind(c) result(count)
      import; type(c_ptr), value :: handle; integer(c_int32_t), value :: number
      type(c_view), intent(inout) :: nearest(3); integer(c_int32_t) :: count
    end function
    function optxv_fault_name(fault) bind(c) result(words)
      import; integer(c_int32_t), value :: fault; type(c_ptr) :: words
    end function
    function optxv_add_message(handle, bytes, size) bind(c) result(status)
      import; type(c_ptr), value :: handle; character(kind=c_char), intent(in) :: bytes(*)
      integer(c_size_t), value :: size; integer(c_int32_t) :: status
    end function
    subroutine optxv_clear_messages(handle) bind(c)
      import; type(c_ptr), value :: handle
    end subroutine
    function strlen(words) bind(c) result(size)
      import; type(c_ptr), value :: words; integer(c_size_t) :: size
    end function
  end interface

contains

  ! ---- Texts of both languages

  !> A text of the library, copied.
  function copied(bytes, size) result(value)
    type(c_ptr), intent(in) :: bytes
    integer(c_size_t), intent(in) :: size
    character(:), allocatable :: value
    character(kind=c_char), pointer :: characters(:)
    integer(c_size_t) :: i

    allocate (character(len=size) :: value)
    if (size == 0) return
    call c_f_pointer(bytes, characters, [size])
    do i = 1, size
      value(i:i) = characters(i)
    end do
  end function copied

  function of_view(view) result(value)
    type(c_view), intent(in) :: view
    character(:), allocatable :: value
    value = copied(view%bytes, view%size)
  end function of_view

  !> A zero-terminated text of the library; empty for nil.
  function of_words(words) result(value)
    type(c_ptr), intent(in) :: words
    character(:), allocatable :: value
    value = ''
    if (c_associated(words)) value = copied(words, strlen(words))
  end function of_words

  !> A text as the library takes it: without blanks at its end, with a zero byte.
  function ended(value) result(words)
    character(*), intent(in) :: value
    character(:), allocatable :: words
    words = trim(value) // c_null_char
  end function ended

  function size_of(value) result(size)
    character(*), intent(in) :: value
    integer(c_size_t) :: size
    size = len_trim(value, c_size_t)
  end function size_of

  !> Gives a status to a caller who asks for it; else a bad one ends the program with a sentence.
  subroutine tell(found, about, status)
    integer(int32), intent(in) :: found
    character(*), intent(in) :: about
    integer(int32), intent(out), optional :: status
    if (present(status)) then
      status = found
    else if (found /= 0) then
      error stop 'optxv: ' // trim(about) // ': ' // of_words(optxv_status_text(found))
    end if
  end subroutine tell

  ! ---- Life

  !> Makes an empty set of options; frees what was there.
  subroutine create(self, status)
    class(options), intent(inout) :: self
    integer(int32), intent(out), optional :: status
    call self%free()
    call tell(optxv_create(self%handle), 'new options', status)
  end subroutine create

  !> Frees the options. They can be made again.
  subroutine free(self)
    class(options), intent(inout) :: self
    call optxv_free(self%handle)
  end subroutine free

  subroutine finalize(self)
    type(options), intent(inout) :: self
    call self%free()
  end subroutine finalize

  subroutine not_assigned(left, right)
    class(options), intent(inout) :: left
    class(options), intent(in) :: right
    if (.not. c_associated(left%handle, right%handle)) error stop 'optxv: options cannot be assigned'
  end subroutine not_assigned

  !> Makes the handle if there is none.
  subroutine prepare(self, found)
    class(options), intent(inout) :: self
    integer(int32), intent(out) :: found
    found = 0
    if (.not. c_associated(self%handle)) found = optxv_create(self%handle)
  end subroutine prepare

  ! ---- Reading and writing

  !> Reads a definition file: the table of options.
  subroutine read_definition(self, filename, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: filename
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_read_definition(self%handle, ended(filename))
    call tell(found, filename, status)
  end subroutine read_definition

  !> Reads a definition from memory; new_line('a') parts its lines. name: what messages call it.
  subroutine read_definition_text(self, content, name, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: content, name
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_read_definition_text(self%handle, ended(name), content, size_of(content))
    call tell(found, name, status)
  end subroutine read_definition_text

  !> Reads a parameter file.
  subroutine read_parameters(self, filename, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: filename
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_read_parameters(self%handle, ended(filename))
    call tell(found, filename, status)
  end subroutine read_parameters

  !> Reads parameter text from memory.
  subroutine read_text(self, content, name, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: content, name
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_read_parameter_text(self%handle, ended(name), content, size_of(content))
    call tell(found, name, status)
  end subroutine read_text

  !> Takes options from the program's own arguments: --name=value, --name value, name=value; -- ends them.
  !> left: the arguments that were not taken. keep_unknown: whether those whose name no option has are left as well,
  !> without a message.
  subroutine read_arguments(self, left, keep_unknown, status)
    class(options), intent(inout) :: self
    type(text), allocatable, intent(out), optional :: left(:)
    logical, intent(in), optional :: keep_unknown
    integer(int32), intent(out), optional :: status
    type(c_word), allocatable, target :: words(:)
    type(c_ptr), allocatable :: argv(:)
    integer(c_int) :: argc
    integer(int32) :: found, flags
    integer :: i

    argc = command_argument_count() + 1
    allocate (words(0:argc - 1), argv(0:argc))
    do i = 0, argc - 1
      words(i)%bytes = argument(i)
      argv(i) = c_loc(words(i)%bytes)
    end do
    argv(argc) = c_null_ptr
    flags = 0
    if (present(keep_unknown)) flags = merge(1, 0, keep_unknown)
    call prepare(self, found)
    if (found == 0) found = optxv_read_arguments(self%handle, argc, argv, flags)
    if (present(left)) then
      allocate (left(argc - 1))
      do i = 1, argc - 1
        left(i)%value = of_words(argv(i))
      end do
    end if
    call tell(found, 'arguments', status)
  end subroutine read_arguments

  !> Argument `position` of the program, zero-terminated; blanks at its end are its own.
  function argument(position) result(bytes)
    integer, intent(in) :: position
    character(kind=c_char), allocatable :: bytes(:)
    character(:), allocatable :: value
    integer :: length, i
    call get_command_argument(position, length=length)
    allocate (character(len=length) :: value)
    if (length > 0) call get_command_argument(position, value)
    allocate (bytes(length + 1))
    do i = 1, length
      bytes(i) = value(i:i)
    end do
    bytes(length + 1) = c_null_char
  end function argument

  !> Reads options from the environment: SOLVER_TIME_LIMIT=5 with the prefix SOLVER_ sets time_limit.
  subroutine read_environment(self, prefix, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: prefix
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_read_environment(self%handle, ended(prefix))
    call tell(found, prefix, status)
  end subroutine read_environment

  !> Writes what is set, as parameter text.
  subroutine write_parameters(self, filename, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: filename
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_write_parameters(self%handle, ended(filename))
    call tell(found, filename, status)
  end subroutine write_parameters

  ! ---- The table

  !> How many options there are; 0 before anything is read.
  function option_count(self) result(count)
    class(options), intent(in) :: self
    integer(int32) :: count
    count = 0
    if (c_associated(self%handle)) count = optxv_option_count(self%handle)
  end function option_count

  !> The number of the option of that name or synonym, from 1; 0 if there is none.
  function find(self, name) result(number)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    integer(int32) :: number
    number = 0
    if (.not. c_associated(self%handle)) return
    if (optxv_find(self%handle, name, size_of(name), number) /= 0) number = 0
  end function find

  !> The name of an option; empty for a number that none has.
  function option_name(self, number) result(name)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    character(:), allocatable :: name
    type(c_option) :: info
    name = ''
    if (.not. c_associated(self%handle)) return
    if (optxv_option_info(self%handle, number, info) == 0) name = of_view(info%name)
  end function option_name

  ! ---- Values by number

  !> The number of a value, 1 where it is left out.
  function chosen(which) result(number)
    integer(int32), intent(in), optional :: which
    integer(int32) :: number
    number = 1
    if (present(which)) number = which
  end function chosen

  !> What stands for an option in sentences.
  function numbered(number) result(words)
    integer(int32), intent(in) :: number
    character(:), allocatable :: words
    character(12) :: digits
    write (digits, '(i0)') number
    words = 'option number ' // trim(digits)
  end function numbered

  !> Whether a call for an option can be made: 0, or the status that stands in its place.
  function ready(self, number) result(found)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    integer(int32) :: found
    found = merge(0, unknown, c_associated(self%handle) .and. number > 0)
  end function ready

  subroutine get_integer_nr(self, number, value, which, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    integer(int32), intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_get_integer_nr(self%handle, number, chosen(which), value)
    call tell(found, numbered(number), status)
  end subroutine get_integer_nr

  subroutine set_integer_nr(self, number, value, which, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    integer(int32), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_set_integer_nr(self%handle, number, chosen(which), value)
    call tell(found, numbered(number), status)
  end subroutine set_integer_nr

  subroutine get_real_nr(self, number, value, which, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    real(real64), intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_get_real_nr(self%handle, number, chosen(which), value)
    call tell(found, numbered(number), status)
  end subroutine get_real_nr

  subroutine set_real_nr(self, number, value, which, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    real(real64), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_set_real_nr(self%handle, number, chosen(which), value)
    call tell(found, numbered(number), status)
  end subroutine set_real_nr

  subroutine get_logical_nr(self, number, value, which, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    logical, intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found, digit
    digit = 0
    found = ready(self, number)
    if (found == 0) found = optxv_get_integer_nr(self%handle, number, chosen(which), digit)
    if (found == 0) value = digit /= 0
    call tell(found, numbered(number), status)
  end subroutine get_logical_nr

  subroutine set_logical_nr(self, number, value, which, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    logical, intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    call self%set_integer_nr(number, merge(1_int32, 0_int32, value), which, status)
  end subroutine set_logical_nr

  subroutine get_text_nr(self, number, value, which, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    character(:), allocatable, intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    type(c_view) :: view
    found = ready(self, number)
    if (found == 0) found = optxv_get_text_nr(self%handle, number, chosen(which), view)
    if (found == 0) value = of_view(view)
    call tell(found, numbered(number), status)
  end subroutine get_text_nr

  subroutine set_text_nr(self, number, value, which, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    character(*), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_set_text_nr(self%handle, number, chosen(which), value, size_of(value))
    call tell(found, numbered(number), status)
  end subroutine set_text_nr

  subroutine parse_nr(self, number, value, which, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    character(*), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_parse_value(self%handle, number, chosen(which), value, size_of(value))
    call tell(found, numbered(number), status)
  end subroutine parse_nr

  subroutine get_list_nr(self, number, value, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    type(text), allocatable, intent(inout) :: value(:)
    integer(int32), intent(out), optional :: status
    integer(int32) :: found, count, i
    type(c_view) :: view
    found = ready(self, number)
    count = -1
    if (found == 0) count = optxv_list_count(self%handle, number)
    if (found == 0 .and. count < 0) found = merge(wrong_kind, unknown, number <= self%count())
    if (found == 0) then
      if (allocated(value)) deallocate (value)
      allocate (value(count))
      do i = 1, count
        if (optxv_list_item(self%handle, number, i, view) == 1) value(i)%value = of_view(view)
      end do
    end if
    call tell(found, numbered(number), status)
  end subroutine get_list_nr

  subroutine reset_nr(self, number, status)
    class(options), intent(inout) :: self
    integer(int32), intent(in) :: number
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    found = ready(self, number)
    if (found == 0) found = optxv_reset(self%handle, number)
    call tell(found, numbered(number), status)
  end subroutine reset_nr

  ! ---- Values by name: the number is found first

  subroutine get_integer_name(self, name, value, which, status)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    integer(int32), intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%get_integer_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine get_integer_name

  subroutine get_real_name(self, name, value, which, status)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    real(real64), intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%get_real_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine get_real_name

  subroutine get_logical_name(self, name, value, which, status)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    logical, intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%get_logical_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine get_logical_name

  subroutine get_text_name(self, name, value, which, status)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    character(:), allocatable, intent(inout) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%get_text_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine get_text_name

  subroutine get_list_name(self, name, value, status)
    class(options), intent(in) :: self
    character(*), intent(in) :: name
    type(text), allocatable, intent(inout) :: value(:)
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%get_list_nr(self%find(name), value, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine get_list_name

  subroutine set_integer_name(self, name, value, which, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    integer(int32), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%set_integer_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine set_integer_name

  subroutine set_real_name(self, name, value, which, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    real(real64), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%set_real_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine set_real_name

  subroutine set_logical_name(self, name, value, which, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    logical, intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%set_logical_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine set_logical_name

  subroutine set_text_name(self, name, value, which, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    character(*), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%set_text_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine set_text_name

  subroutine parse_name(self, name, value, which, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    character(*), intent(in) :: value
    integer(int32), intent(in), optional :: which
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%parse_nr(self%find(name), value, which, found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine parse_name

  subroutine reset_name(self, name, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: name
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call self%reset_nr(self%find(name), found)
    call tell(found, 'option "' // trim(name) // '"', status)
  end subroutine reset_name

  ! ---- Messages

  function message_count(self) result(count)
    class(options), intent(in) :: self
    integer(int32) :: count
    count = 0
    if (c_associated(self%handle)) count = optxv_message_count(self%handle)
  end function message_count

  !> How many errors are in the queue; one that a second message explains counts 2.
  function error_count(self) result(errors)
    class(options), intent(in) :: self
    integer(int32) :: errors, warnings
    errors = 0
    if (c_associated(self%handle)) call optxv_error_count(self%handle, errors, warnings)
  end function error_count

  !> Message `number`, from 1.
  subroutine get_message(self, number, found_message, status)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    type(message), intent(out) :: found_message
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    type(c_message) :: info
    found = ready(self, number)
    if (found == 0) found = optxv_message_info(self%handle, number, info)
    if (found == 0) call fill(self, number, info, found_message)
    call tell(found, 'message', status)
  end subroutine get_message

  subroutine fill(self, number, info, filled)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    type(c_message), intent(in) :: info
    type(message), intent(inout) :: filled
    type(c_view) :: nearest(3)
    integer :: i, count
    filled%kind = info%kind
    filled%detail = info%detail /= 0
    filled%option = info%option
    filled%shown = shown(self, number)
    filled%words = of_view(info%text)
    filled%fault = ''
    if (info%fault > 0) filled%fault = of_words(optxv_fault_name(info%fault))
    filled%about = of_view(info%about)
    filled%seen = of_view(info%seen)
    filled%file = of_words(info%place%file)
    filled%line = info%place%line
    filled%column = info%place%column
    filled%length = info%place%length
    count = optxv_message_nearest(self%handle, number, nearest)
    allocate (filled%nearest(count))
    do i = 1, count
      filled%nearest(i)%value = of_view(nearest(i))
    end do
  end subroutine fill

  function shown(self, number) result(line)
    class(options), intent(in) :: self
    integer(int32), intent(in) :: number
    character(:), allocatable :: line
    character(kind=c_char, len=buffer_size) :: buffer
    line = ''
    if (optxv_show_message(self%handle, number, buffer) == 0) line = buffer(:index(buffer, c_null_char) - 1)
  end function shown

  !> Adds an error of the program's own to the queue.
  subroutine add_message(self, words, status)
    class(options), intent(inout) :: self
    character(*), intent(in) :: words
    integer(int32), intent(out), optional :: status
    integer(int32) :: found
    call prepare(self, found)
    if (found == 0) found = optxv_add_message(self%handle, words, size_of(words))
    call tell(found, 'message', status)
  end subroutine add_message

  subroutine clear_messages(self)
    class(options), intent(inout) :: self
    if (c_associated(self%handle)) call optxv_clear_messages(self%handle)
  end subroutine clear_messages
end module optxv
