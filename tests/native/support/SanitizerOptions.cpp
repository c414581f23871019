// How the address sanitizer watches every case: an allocation that cannot be had answers null, as the driver expects.
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1:detect_stack_use_after_return=1:strict_string_checks=1";
}
