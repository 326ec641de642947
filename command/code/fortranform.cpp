// Generated code in Fortran 2008: a module, which needs no other one of the library.

#include "code/languages.h"

namespace command {
namespace {

constexpr std::string_view skeleton = R"code(! The options of $(source), made by: $(made)
! Change the definition and make this anew: what is changed here is lost.
module $(prefix)_options
  use, intrinsic :: iso_c_binding, only: c_ptr, c_char, c_double, c_int32_t, c_int64_t, c_size_t, c_f_pointer
  implicit none

  ! The statuses of the functions below, as optxv/embedding.h has them; a positive one is an error
  ! number of the system.
  integer(c_int32_t), parameter, private :: ok = 0, refused = -3, other_table = -5, bad_argument = -6

  ! The table of options that the numbers are of; see optxv_table_mark.
  integer(c_int64_t), parameter :: $(prefix)_table_mark = &
    $(signedmark)

  ! The numbers of the options.
%each options
  integer(c_int32_t), parameter :: $(prefix)_number_$(id) = $(number)
%end

  ! The numbers that the definition gives them.
%each references
  integer(c_int32_t), parameter :: $(prefix)_reference_$(id) = &
    $(reference)
%end
%each enumerations

  $(comment)
%each items
  $(comment)
  integer(c_int32_t), parameter :: $(constant) = &
    $(value)
%end
%if choice
  character(len=$(longest)), parameter :: $(prefix)_$(id)_texts($(count)) = [character(len=$(longest)) :: &
%end
%if listed
  integer(c_int32_t), parameter :: $(prefix)_$(id)_values($(count)) = [integer(c_int32_t) :: &
%end
%each items
    $(literal)$(comma) &
%end
    ]
%end

  ! The values of the options, with the defaults of the definition. Texts are padded with blanks.
  type :: $(prefix)_values
%each fields
    $(comment)
%if list
    $(declaration)
%end
%unless list
    $(declaration) = $(default)
%end
%end
%unless fields
    integer :: none = 0
%end
  end type $(prefix)_values

  type, bind(c), private :: text_of_c
    type(c_ptr) :: bytes
    integer(c_size_t) :: size
  end type text_of_c

  interface
    function mark_of(handle) bind(c, name='optxv_table_mark') result(mark)
      import :: c_ptr, c_int64_t
      type(c_ptr), value :: handle
      integer(c_int64_t) :: mark
    end function mark_of
    function c_get_integer(handle, number, which, value) bind(c, name='optxv_get_integer_nr') result(status)
      import :: c_ptr, c_int32_t
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      integer(c_int32_t), intent(inout) :: value
      integer(c_int32_t) :: status
    end function c_get_integer
    function c_set_integer(handle, number, which, value) bind(c, name='optxv_set_integer_nr') result(status)
      import :: c_ptr, c_int32_t
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which, value
      integer(c_int32_t) :: status
    end function c_set_integer
    function c_get_real(handle, number, which, value) bind(c, name='optxv_get_real_nr') result(status)
      import :: c_ptr, c_int32_t, c_double
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      real(c_double), intent(inout) :: value
      integer(c_int32_t) :: status
    end function c_get_real
    function c_set_real(handle, number, which, value) bind(c, name='optxv_set_real_nr') result(status)
      import :: c_ptr, c_int32_t, c_double
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      real(c_double), value :: value
      integer(c_int32_t) :: status
    end function c_set_real
    function c_get_text(handle, number, which, value) bind(c, name='optxv_get_text_nr') result(status)
      import :: c_ptr, c_int32_t, text_of_c
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      type(text_of_c), intent(inout) :: value
      integer(c_int32_t) :: status
    end function c_get_text
    function c_set_text(handle, number, which, bytes, size) bind(c, name='optxv_set_text_nr') result(status)
      import :: c_ptr, c_int32_t, c_size_t, c_char
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      character(kind=c_char), intent(in) :: bytes(*)
      integer(c_size_t), value :: size
      integer(c_int32_t) :: status
    end function c_set_text
    function c_parse_value(handle, number, which, bytes, size) bind(c, name='optxv_parse_value') result(status)
      import :: c_ptr, c_int32_t, c_size_t, c_char
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, which
      character(kind=c_char), intent(in) :: bytes(*)
      integer(c_size_t), value :: size
      integer(c_int32_t) :: status
    end function c_parse_value
    function c_reset(handle, number) bind(c, name='optxv_reset') result(status)
      import :: c_ptr, c_int32_t
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number
      integer(c_int32_t) :: status
    end function c_reset
    function c_list_count(handle, number) bind(c, name='optxv_list_count') result(count)
      import :: c_ptr, c_int32_t
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number
      integer(c_int32_t) :: count
    end function c_list_count
    function c_list_item(handle, number, position, item) bind(c, name='optxv_list_item') result(found)
      import :: c_ptr, c_int32_t, text_of_c
      type(c_ptr), value :: handle
      integer(c_int32_t), value :: number, position
      type(text_of_c), intent(inout) :: item
      integer(c_int32_t) :: found
    end function c_list_item
    function c_read_definition_text(handle, name, bytes, size) &
        bind(c, name='optxv_read_definition_text') result(status)
      import :: c_ptr, c_int32_t, c_size_t, c_char
      type(c_ptr), value :: handle
      character(kind=c_char), intent(in) :: name(*), bytes(*)
      integer(c_size_t), value :: size
      integer(c_int32_t) :: status
    end function c_read_definition_text
  end interface

  interface get
    module procedure get_integer, get_real, get_boolean, get_text, get_list
  end interface get
  interface set
    module procedure set_integer, set_real, set_boolean, set_text, set_list
  end interface set

  private :: mark_of, c_get_integer, c_set_integer, c_get_real, c_set_real, c_get_text, c_set_text, &
    c_parse_value, c_reset, c_list_count, c_list_item, c_read_definition_text, get, set, get_integer, get_real, &
    get_boolean, get_text, get_list, set_integer, set_real, set_boolean, set_text, set_list, get_choice, &
    set_choice, get_listed, note, copied, small
  private :: c_ptr, c_char, c_double, c_int32_t, c_int64_t, c_size_t, c_f_pointer

contains

  ! Fills the values from a handle of the C interface, and gives a status: -5 for a handle of another
  ! definition, of which nothing is filled; -3 where an option has a value that is none of its items,
  ! which is so while bounds are off: that field has its default.
  function $(prefix)_fill(values, handle) result(status)
    type($(prefix)_values), intent(inout) :: values
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t) :: status
    type($(prefix)_values) :: defaults
    status = other_table
    if (mark_of(handle) /= $(prefix)_table_mark) return
    status = ok
    values = defaults
%each fields
%each parts
%if choice
    call get_choice(handle, $(number), $(which), values%$(id)$(part), &
      $(prefix)_$(id)_texts, status)
%end
%if listed
    call get_listed(handle, $(number), $(which), values%$(id)$(part), &
      $(prefix)_$(id)_values, status)
%end
%if plain
    call get(handle, $(number), $(which), values%$(id)$(part), status)
%end
%end
%end
  end function $(prefix)_fill

  ! Sets the options whose values differ from those of the handle. The first failure is the status;
  ! the other options are set all the same. What was refused is in the queue of messages.
  function $(prefix)_apply(values, handle) result(status)
    type($(prefix)_values), intent(in) :: values
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t) :: status
    status = other_table
    if (mark_of(handle) /= $(prefix)_table_mark) return
    status = ok
%each fields
%each parts
%if choice
    call set_choice(handle, $(number), $(which), values%$(id)$(part), &
      $(prefix)_$(id)_texts, status)
%end
%unless choice
    call set(handle, $(number), $(which), values%$(id)$(part), status)
%end
%end
%end
  end function $(prefix)_apply
%if embedded

  ! Reads the definition that this was made from. Its text is here, so that no file is needed.
  function $(prefix)_read_definition(handle) result(status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t) :: status
    character(len=:), allocatable :: text
    integer :: used
    allocate (character(len=$(size)) :: text)
    used = 0
%each lines
    call add($(literal))
%end
    status = c_read_definition_text(handle, $(file) // achar(0), text, int(used, c_size_t))
  contains
    subroutine add(piece)
      character(len=*), intent(in) :: piece
      text(used + 1:used + len(piece)) = piece
      used = used + len(piece)
    end subroutine add
  end function $(prefix)_read_definition
%end

  ! A status keeps the first failure.
  subroutine note(status, next)
    integer(c_int32_t), intent(inout) :: status
    integer(c_int32_t), intent(in) :: next
    if (status == ok) status = next
  end subroutine note

  subroutine copied(text, value)
    type(text_of_c), intent(in) :: text
    character(len=*), intent(out) :: value
    character(kind=c_char), pointer :: bytes(:)
    integer :: i
    value = ''
    if (text%size == 0) return
    call c_f_pointer(text%bytes, bytes, [text%size])
    do i = 1, min(int(text%size), len(value))
      value(i:i) = bytes(i)
    end do
  end subroutine copied

  pure function small(text) result(lower)
    character(len=*), intent(in) :: text
    character(len=len(text)) :: lower
    integer :: i
    lower = text
    do i = 1, len(text)
      if (text(i:i) >= 'A' .and. text(i:i) <= 'Z') lower(i:i) = achar(iachar(text(i:i)) + 32)
    end do
  end function small

  subroutine get_integer(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    integer(c_int32_t), intent(inout) :: value, status
    call note(status, c_get_integer(handle, number, which, value))
  end subroutine get_integer

  subroutine set_integer(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which, value
    integer(c_int32_t), intent(inout) :: status
    integer(c_int32_t) :: now
    now = 0
    call get(handle, number, which, now, status)
    if (now /= value) call note(status, c_set_integer(handle, number, which, value))
  end subroutine set_integer

  subroutine get_boolean(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    logical, intent(inout) :: value
    integer(c_int32_t), intent(inout) :: status
    integer(c_int32_t) :: now
    now = merge(1, 0, value)
    call get(handle, number, which, now, status)
    value = now /= 0
  end subroutine get_boolean

  subroutine set_boolean(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    logical, intent(in) :: value
    integer(c_int32_t), intent(inout) :: status
    logical :: now
    now = .not. value
    call get(handle, number, which, now, status)
    if (now .neqv. value) call note(status, c_set_integer(handle, number, which, merge(1, 0, value)))
  end subroutine set_boolean

  subroutine get_real(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    real(c_double), intent(inout) :: value
    integer(c_int32_t), intent(inout) :: status
    call note(status, c_get_real(handle, number, which, value))
  end subroutine get_real

  subroutine set_real(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    real(c_double), intent(in) :: value
    integer(c_int32_t), intent(inout) :: status
    real(c_double) :: now
    now = 0
    call get(handle, number, which, now, status)
    if (now < value .or. now > value) call note(status, c_set_real(handle, number, which, value))
  end subroutine set_real

  subroutine get_text(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    character(len=255), intent(inout) :: value
    integer(c_int32_t), intent(inout) :: status
    type(text_of_c) :: text
    integer(c_int32_t) :: got
    got = c_get_text(handle, number, which, text)
    if (got == ok) call copied(text, value)
    call note(status, got)
  end subroutine get_text

  subroutine set_text(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    character(len=255), intent(in) :: value
    integer(c_int32_t), intent(inout) :: status
    character(len=255) :: now
    now = ''
    call get(handle, number, which, now, status)
    if (now /= value) call note(status, c_set_text(handle, number, which, value, len_trim(value, c_size_t)))
  end subroutine set_text

  subroutine get_list(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    character(len=255), allocatable, intent(inout) :: value(:)
    integer(c_int32_t), intent(inout) :: status
    type(text_of_c) :: text
    integer(c_int32_t) :: i
    if (allocated(value)) deallocate (value)
    allocate (value(max(c_list_count(handle, number), 0)))
    do i = 1, size(value)
      if (c_list_item(handle, number, i, text) /= which) call note(status, bad_argument)
      call copied(text, value(i))
    end do
  end subroutine get_list

  subroutine set_list(handle, number, which, value, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    character(len=255), allocatable, intent(in) :: value(:)
    integer(c_int32_t), intent(inout) :: status
    character(len=255), allocatable :: now(:)
    integer :: i
    if (.not. allocated(value)) return
    call get(handle, number, which, now, status)
    if (size(now) == size(value)) then
      if (all(now == value)) return
    end if
    call note(status, c_reset(handle, number))
    do i = 1, size(value)
      call note(status, c_parse_value(handle, number, which, value(i), len_trim(value(i), c_size_t)))
    end do
  end subroutine set_list

  ! The position, from 0, of the item that an option is set to.
  subroutine get_choice(handle, number, which, value, texts, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which
    integer(c_int32_t), intent(inout) :: value, status
    character(len=*), intent(in) :: texts(:)
    character(len=255) :: now
    integer(c_int32_t) :: got, i
    got = ok
    call get(handle, number, which, now, got)
    do i = 1, merge(size(texts), 0, got == ok)
      if (small(texts(i)) == small(now)) then
        value = i - 1
        return
      end if
    end do
    call note(status, merge(refused, got, got == ok))
  end subroutine get_choice

  subroutine set_choice(handle, number, which, value, texts, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which, value
    character(len=*), intent(in) :: texts(:)
    integer(c_int32_t), intent(inout) :: status
    integer(c_int32_t) :: now, ignored
    now = -1
    ignored = ok
    call get_choice(handle, number, which, now, texts, ignored)
    if (now == value) return
    if (value < 0 .or. value >= size(texts)) then
      call note(status, bad_argument)
    else
      call note(status, c_set_text(handle, number, which, texts(value + 1), len_trim(texts(value + 1), c_size_t)))
    end if
  end subroutine set_choice

  subroutine get_listed(handle, number, which, value, values, status)
    type(c_ptr), intent(in) :: handle
    integer(c_int32_t), intent(in) :: number, which, values(:)
    integer(c_int32_t), intent(inout) :: value, status
    integer(c_int32_t) :: now
    now = value
    call get(handle, number, which, now, status)
    if (any(values == now)) then
      value = now
    else
      call note(status, refused)
    end if
  end subroutine get_listed
end module $(prefix)_options
)code";

}  // namespace

const language fortranlanguage = {
    .name = "fortran",
    // Components and prefixed constants may have any name.
    .rules = {.keywords = "", .cased = false, .longest = 63},
    .ownwords = "",
    .lowercase = true,
    .longestdecoration = 12,  // _reference_ and its prefix
    .longestprefix = 24,
    .comment = {"! ", "! ", "", ""},
    .textliteral = fortrantext,
    .rawliteral = fortrantext,
    .realliteral = fortranreal,
    .integerliteral = fortraninteger,
    .booleans = {".false.", ".true."},
    .declarations = {{{"integer(c_int32_t) :: $(id)", "integer(c_int32_t) :: $(id)(2)"},
                      {"real(c_double) :: $(id)", "real(c_double) :: $(id)(2)"},
                      {"character(len=255) :: $(id)", "character(len=255) :: $(id)(2)"},
                      {"logical :: $(id)", "logical :: $(id)(2)"},
                      {"integer(c_int32_t) :: $(id)", "integer(c_int32_t) :: $(id)(2)"},
                      {"integer(c_int32_t) :: $(id)", "integer(c_int32_t) :: $(id)(2)"},
                      {"character(len=255), allocatable :: $(id)(:)", ""}}},
    .constant = "$(prefix)_$(id)_$(item)",
    .itemvalue = "$(constant)",
    .pairvalue = "[ &\n$(first), &\n$(second)]",
    .parts = {"(1)", "(2)"},
    .skeleton = skeleton};

}  // namespace command
